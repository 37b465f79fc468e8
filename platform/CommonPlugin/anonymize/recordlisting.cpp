#include "recordlisting.h"

#include "recordsql.h"
#include "textfold.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

namespace {

constexpr int mostTicked = 2000;

/// The studies of records, by the names that hosts have for their table; their keys are its one value.
QString studyStatement(const QString &tableName)
{
    const QString chosen = QStringLiteral("(SELECT value FROM json_each(?))");
    if (tableName == QLatin1String("patient")) {
        return QStringLiteral("SELECT pk FROM generalstudy WHERE patient_fk IN ") + chosen;
    }
    if (tableName == QLatin1String("generalseries") || tableName == QLatin1String("series")) {
        return QStringLiteral("SELECT study_fk FROM generalseries WHERE pk IN ") + chosen;
    }
    if (tableName == QLatin1String("imageformat") || tableName == QLatin1String("image")) {
        return QStringLiteral("SELECT study_fk FROM generalseries WHERE pk IN"
                              " (SELECT series_fk FROM imageformat WHERE pk IN %1)")
            .arg(chosen);
    }
    return QStringLiteral("SELECT pk FROM generalstudy WHERE pk IN ") + chosen;
}

class ListingReader
{
public:
    ListingReader(const QSqlDatabase &db, const RecordQuestion &question, const std::atomic<bool> &stop)
        : m_db(db)
        , m_text(foldedText(question.text))
        , m_stop(stop)
    { }

    QSet<qlonglong> readTicked(const RecordQuestion &question) const
    {
        return question.tableName.isEmpty()
            ? question.ticked
            : readKeys(studyStatement(question.tableName), RecordSql::keyList(question.keys));
    }

    QVector<ListedPatient> read(const QSet<qlonglong> &ticked)
    {
        if (m_text.isEmpty()) {
            const QString patients = RecordSql::keyList(readKeys(
                QStringLiteral(
                    "SELECT patient_fk FROM generalstudy WHERE pk IN (SELECT value FROM json_each(?))"),
                RecordSql::keyList(ticked)));
            addPatients(QStringLiteral("WHERE pk IN (SELECT value FROM json_each(?))"), patients, mostTicked);
        }
        addPatients({}, {}, RecordListing::mostPatients);
        addStudies();
        return m_patients;
    }

private:
    QSet<qlonglong> readKeys(const QString &statement, const QString &keys) const
    {
        QSet<qlonglong> found;
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        query.prepare(statement);
        query.addBindValue(keys);
        query.exec();
        while (!m_stop && query.next()) {
            found.insert(query.value(0).toLongLong());
        }
        return found;
    }

    /// Row by row rather than by the statement, which nothing could stop.
    bool isWanted(const ListedPatient &patient) const
    {
        const QString name = QString(patient.name).replace(QLatin1Char('^'), QLatin1Char(' '));
        return !m_rows.contains(patient.key)
            && (m_text.isEmpty() || foldedText(name).contains(m_text)
                || foldedText(patient.id).contains(m_text));
    }

    /// Adds those that are wanted until there are so many.
    void addPatients(const QString &condition, const QString &keys, int most)
    {
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        query.prepare(
            QStringLiteral("SELECT pk, PatientName, PatientID, NumberOfPatientRelatedInstances FROM patient"
                           " %1 ORDER BY updated_time DESC, pk DESC")
                .arg(condition));
        if (!condition.isEmpty()) {
            query.addBindValue(keys);
        }
        query.exec();
        while (!m_stop && m_patients.size() < most && query.next()) {
            const ListedPatient patient{query.value(0).toLongLong(), query.value(1).toString(),
                query.value(2).toString(), query.value(3).toString(), {}};
            if (isWanted(patient)) {
                m_rows.insert(patient.key, m_patients.size());
                m_patients.append(patient);
            }
        }
    }

    void addStudies()
    {
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        query.prepare(QStringLiteral("SELECT patient_fk, pk, StudyDescription, ModalitiesInStudy, StudyDate,"
                                     " NumberOfStudyRelatedInstances FROM generalstudy"
                                     " WHERE patient_fk IN (SELECT value FROM json_each(?))"
                                     " ORDER BY StudyDate DESC, pk"));
        query.addBindValue(RecordSql::keyList(m_rows.keys()));
        query.exec();
        while (!m_stop && query.next()) {
            m_patients[m_rows.value(query.value(0).toLongLong())].studies.append(
                {query.value(1).toLongLong(), query.value(2).toString(), query.value(3).toString(),
                    query.value(4).toString(), query.value(5).toString()});
        }
    }

    const QSqlDatabase &m_db;
    const QString m_text;
    const std::atomic<bool> &m_stop;
    QVector<ListedPatient> m_patients;
    QHash<qlonglong, int> m_rows; ///< by key
};

} // namespace

RecordListing RecordListing::read(
    const QSqlDatabase &db, const RecordQuestion &question, const std::atomic<bool> &stop)
{
    ListingReader reader(db, question, stop);
    RecordListing listing;
    listing.ticked = reader.readTicked(question);
    listing.patients = reader.read(listing.ticked);
    return listing;
}
