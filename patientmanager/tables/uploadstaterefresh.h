#pragma once

#include "patientmanager_export.h"

#include <QSqlDatabase>
#include <QString>

#include <functional>

class QSqlQuery;

/**
 * Makes upload states of what has been counted: the series that are not uploaded yet get theirs from the
 * counters of the transfer tables, a patient and all its studies from the series.
 *
 * Each statement stands for itself, so writers get in between. What the index refuses is left as it was. On
 * the thread of its connection.
 */
class PATIENTMANAGER_EXPORT UploadStateRefresh
{
public:
    /// Asked before each row: whether to leave off.
    using Stop = std::function<bool()>;

    explicit UploadStateRefresh(const QSqlDatabase &db, Stop isStopped = {});

    /// @return false where it left off
    bool refreshSeries();
    /// The same for the series of one UID, whatever its state. @return false where it left off
    bool refreshSeries(const QString &uid);
    /// A patient whose state is uploaded is left alone: only new images take that back.
    /// @return false where it left off, before anything was written
    bool refreshPatient(qlonglong pk);

private:
    bool run(QSqlQuery *query, const QString &statement) const;
    void write(const QString &statement) const;
    bool isStopped() const { return m_isStopped && m_isStopped(); }

    QSqlDatabase m_db;
    Stop m_isStopped;
};
