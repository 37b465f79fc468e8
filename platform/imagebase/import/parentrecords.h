#pragma once

#include "dicomheader.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <array>

/**
 * The patients, studies and series that an import enters its images under, inside a transaction of the
 * caller's.
 *
 * They are found or made by their identity: a patient is (PatientID, IssuerOfPatientID, PatientName,
 * PatientBirthDate); without a PatientID it is the same patient only within the same study, so that strangers
 * never merge. One thread; the keys that it remembers are good until forget(). What fails, fails with
 * error().
 */
class ParentRecords
{
public:
    explicit ParentRecords(const QSqlDatabase &db);

    /// The key of the series that an instance belongs to; 0 for a failure.
    qlonglong seriesOf(const DicomHeader &header);
    /// The instance of this header has other bytes than before: as with a new one, its branch is updated now
    /// and no longer uploaded.
    bool noteNewContent(const DicomHeader &header);
    /// Removes a series that has lost its last image, and what that leaves empty above it.
    bool removeEmpty(qlonglong seriesPk);

    /// To be called after a rollback, and when another connection may have changed the records.
    void forget();
    const QSqlError &error() const { return m_error; }

private:
    qlonglong patient(const DicomHeader &header);
    qlonglong child(RecordLevel level, qlonglong parent, const QString &uid, const DicomHeader &header);
    qlonglong insert(RecordLevel level, qlonglong parent, const DicomHeader &header);
    qlonglong remember(RecordLevel level, const QString &key, qlonglong pk);
    qlonglong firstKey(QSqlQuery &query);
    bool run(QSqlQuery &query);

    static constexpr std::size_t parentLevels = 3;

    QSqlDatabase m_db;
    QSqlQuery m_findPatient;
    QSqlQuery m_findNamelessPatient;
    std::array<QSqlQuery, parentLevels> m_find;
    std::array<QSqlQuery, parentLevels> m_insert;
    std::array<QHash<QString, qlonglong>, parentLevels> m_known;
    std::array<QString, 6> m_lastIdentity;
    qlonglong m_lastSeries = 0;
    QSqlError m_error;
};
