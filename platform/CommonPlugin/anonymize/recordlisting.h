#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QVector>

#include <atomic>

class QSqlDatabase;

/// What a list of patients is asked for: a plain value.
struct RecordQuestion
{
    QString text; ///< that the names or IDs have; empty for the ticked ones and the newest
    QSet<qlonglong> ticked; ///< studies
    /// Records whose studies are to be ticked in place of these, by the name that hosts have for their table.
    QString tableName = {};
    QList<qlonglong> keys = {};
};

struct ListedStudy
{
    qlonglong key = 0;
    QString description;
    QString modalities;
    QString date;
    QString images;
};

struct ListedPatient
{
    qlonglong key = 0;
    QString name;
    QString id;
    QString images;
    QVector<ListedStudy> studies;
};

/// Patients and their studies, as an index has them.
struct RecordListing
{
    /// At most so many are listed, beside the ones that are ticked.
    static constexpr int mostPatients = 200;

    QSet<qlonglong> ticked; ///< studies
    QVector<ListedPatient> patients; ///< the ticked ones first, then by their last change

    /// Reads them on the thread of the connection; soon after a stop with what it has.
    static RecordListing read(
        const QSqlDatabase &db, const RecordQuestion &question, const std::atomic<bool> &stop);
};
