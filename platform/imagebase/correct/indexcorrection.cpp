#include "indexcorrection.h"

#include "importmarker.h"
#include "indexconnection.h"
#include "uploadstatus.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

namespace {

using Problem = IndexCorrectionResult::Problem;

constexpr char derivedCounts[] = "NumberOfPatientRelated";

/// One correction inside its transaction.
class PatientChange
{
public:
    PatientChange(const QSqlDatabase &db, const IndexCorrection &correction)
        : m_db(db)
        , m_correction(correction)
    { }

    IndexCorrectionResult run();

private:
    bool exec(QSqlQuery &query, const QString &sql, const QVariantList &values = {});
    bool exec(const QString &sql, const QVariantList &values = {});
    bool moveToPatient(qlonglong target, bool all);
    bool setValues(qlonglong patient);
    qlonglong patientOfNewIdentity(const IndexedPatient &patient);
    qlonglong copyOf(qlonglong patient);
    bool isStudyTwice(qlonglong patient, qlonglong target, bool all);
    bool setStatusRight(qlonglong patient);
    bool fail(Problem problem);

    const QSqlDatabase m_db;
    const IndexCorrection &m_correction;
    IndexCorrectionResult m_result;
    qlonglong m_studyPk = 0;
};

bool PatientChange::exec(QSqlQuery &query, const QString &sql, const QVariantList &values)
{
    query.setForwardOnly(true);
    bool good = query.prepare(sql);
    for (const QVariant &value : values) {
        query.addBindValue(value);
    }
    good = good && query.exec();
    if (!good) {
        m_result.error = query.lastError();
    }
    return good || fail(Problem::Database);
}

bool PatientChange::exec(const QString &sql, const QVariantList &values)
{
    QSqlQuery query(m_db);
    return exec(query, sql, values);
}

bool PatientChange::fail(Problem problem)
{
    m_result.problem = problem;
    return false;
}

IndexCorrectionResult PatientChange::run()
{
    const IndexedPatient patient =
        indexedPatientOf(m_db, m_correction.studyPk, m_correction.studyUid, &m_result.error);
    if (!patient.isFound) {
        fail(m_result.error.isValid() ? Problem::Database : Problem::NotFound);
        return m_result;
    }
    QSqlQuery query(m_db);
    if (!exec(query,
            QStringLiteral("SELECT pk FROM generalstudy WHERE patient_fk = ? AND StudyInstanceUID = ?"),
            {patient.pk, m_correction.studyUid})
        || (!query.next() && !fail(Problem::NotFound))) {
        return m_result;
    }
    m_studyPk = query.value(0).toLongLong();
    query.finish();
    const bool all = m_correction.scope == IndexCorrection::Scope::Patient || patient.studyUids.size() == 1;
    m_result.studies = all ? patient.studyUids.size() : 1;
    qlonglong target = patientOfNewIdentity(patient);
    m_result.isMerged = target != 0;
    if (target == 0 && m_result.isGood()) {
        target = all ? patient.pk : copyOf(patient.pk);
    }
    const bool moves = target != patient.pk;
    m_result.patientPk = target;
    if (m_result.isGood() && moves && isStudyTwice(patient.pk, target, all)) {
        fail(Problem::StudyTwice);
    }
    m_result.isGood() && (!moves || moveToPatient(target, all)) && setValues(target) && setStatusRight(target)
        && exec(QStringLiteral("DELETE FROM patient WHERE pk = ? AND NumberOfPatientRelatedStudies = 0"),
            {patient.pk});
    return m_result;
}

qlonglong PatientChange::patientOfNewIdentity(const IndexedPatient &patient)
{
    const auto value = [&](PatientField field) {
        const QString text = m_correction.changes.value(field, patient.values[field]);
        return text.isNull() ? QString(QLatin1String("")) : text;
    };
    QSqlQuery query(m_db);
    const bool found = exec(query,
                           QStringLiteral("SELECT pk FROM patient WHERE PatientID = ? AND PatientID <> '' "
                                          "AND PatientName = ? AND PatientBirthDate = ? AND pk <> ? AND "
                                          "IssuerOfPatientID = (SELECT IssuerOfPatientID FROM patient "
                                          "WHERE pk = ?)"),
                           {value(PatientField::Id), value(PatientField::Name),
                               value(PatientField::BirthDate), patient.pk, patient.pk})
        && query.next();
    return found ? query.value(0).toLongLong() : 0;
}

/// A patient without studies yet, like another, but for the values to be given: two of the same identity must
/// not be.
qlonglong PatientChange::copyOf(qlonglong patient)
{
    QStringList columns;
    QStringList values;
    QVariantList bound;
    const QSqlRecord record = m_db.record(QStringLiteral("patient"));
    for (int at = 0; at < record.count(); ++at) {
        const QString column = record.fieldName(at);
        if (column == QLatin1String("pk") || column.startsWith(QLatin1String(derivedCounts))) {
            continue;
        }
        columns.append(column);
        values.append(column);
        for (auto change = m_correction.changes.cbegin(); change != m_correction.changes.cend(); ++change) {
            if (PatientValues::column(change.key()) == column) {
                values.last() = QStringLiteral("?");
                bound.append(change->isNull() ? QString(QLatin1String("")) : *change);
            }
        }
    }
    QSqlQuery query(m_db);
    return exec(query,
               QStringLiteral("INSERT INTO patient (%1) SELECT %2 FROM patient WHERE pk = ?")
                   .arg(columns.join(QStringLiteral(", ")), values.join(QStringLiteral(", "))),
               bound << patient)
        ? query.lastInsertId().toLongLong()
        : 0;
}

bool PatientChange::isStudyTwice(qlonglong patient, qlonglong target, bool all)
{
    QSqlQuery query(m_db);
    return exec(query,
               QStringLiteral("SELECT 1 FROM generalstudy AS moved JOIN generalstudy AS there ON "
                              "there.StudyInstanceUID = moved.StudyInstanceUID AND there.patient_fk = ? "
                              "WHERE moved.patient_fk = ? AND (? OR moved.pk = ?)"),
               {target, patient, all, m_studyPk})
        && query.next();
}

bool PatientChange::moveToPatient(qlonglong target, bool all)
{
    return all
        ? exec(QStringLiteral("UPDATE generalstudy SET patient_fk = ? WHERE patient_fk = "
                              "(SELECT patient_fk FROM generalstudy WHERE pk = ?)"),
            {target, m_studyPk})
        : exec(QStringLiteral("UPDATE generalstudy SET patient_fk = ? WHERE pk = ?"), {target, m_studyPk});
}

bool PatientChange::setValues(qlonglong patient)
{
    for (auto change = m_correction.changes.cbegin(); change != m_correction.changes.cend(); ++change) {
        const bool mayBeNull = change.key() == PatientField::Sex || change.key() == PatientField::Comments;
        QVariant value(*change);
        if (change->isEmpty()) {
            value = mayBeNull ? QVariant(QVariant::String) : QVariant(QStringLiteral(""));
        }
        if (!exec(QStringLiteral("UPDATE patient SET %1 = ?, updated_time = datetime('now', 'localtime') "
                                 "WHERE pk = ?")
                      .arg(PatientValues::column(change.key())),
                {value, patient})) {
            return false;
        }
    }
    return true;
}

/// A patient is uploaded where all of the studies are.
bool PatientChange::setStatusRight(qlonglong patient)
{
    return exec(QStringLiteral("UPDATE patient SET Status = ? WHERE pk = ? AND Status = ? AND EXISTS "
                               "(SELECT 1 FROM generalstudy WHERE patient_fk = patient.pk AND Status <> ?)"),
        {UploadStatus::notUploaded(), patient, UploadStatus::uploaded(), UploadStatus::uploaded()});
}

/// The rows of a query that has been prepared. @return why they are not all
template <typename Row>
QSqlError readAll(QSqlQuery &query, const Row &row)
{
    for (bool more = query.exec() && query.next(); more; more = query.next()) {
        row();
    }
    const QSqlError error = query.lastError();
    query.finish();
    return error;
}

QSqlError readPatient(
    const QSqlDatabase &db, qlonglong studyPk, const QString &studyUid, IndexedPatient &patient)
{
    QStringList columns;
    for (const PatientField field : PatientValues::fields) {
        columns.append(PatientValues::column(field));
    }
    QSqlQuery query(db);
    query.prepare(
        QStringLiteral("SELECT patient.pk, %1 FROM generalstudy JOIN patient ON patient.pk = patient_fk "
                       "WHERE StudyInstanceUID = ? ORDER BY generalstudy.pk = ? DESC LIMIT 1")
            .arg(columns.join(QStringLiteral(", "))));
    query.addBindValue(studyUid);
    query.addBindValue(studyPk);
    return readAll(query, [&] {
        patient.isFound = true;
        patient.pk = query.value(0).toLongLong();
        int at = 1;
        for (const PatientField field : PatientValues::fields) {
            patient.values[field] = query.value(at++).toString();
        }
    });
}

QSqlError listStudies(const QSqlDatabase &db, IndexedPatient &patient)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("SELECT StudyInstanceUID FROM generalstudy WHERE patient_fk = ? "
                                 "ORDER BY StudyDate DESC, pk"));
    query.addBindValue(patient.pk);
    return readAll(query, [&] { patient.studyUids.append(query.value(0).toString()); });
}

QSqlError countFiles(const QSqlDatabase &db, const QString &studyUid, IndexedPatient &patient)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral(
        "SELECT ifnull(IrradiationEventUID = ?, 0), count(*) FROM generalstudy JOIN generalseries ON "
        "study_fk = generalstudy.pk JOIN imageformat ON series_fk = generalseries.pk "
        "WHERE patient_fk = ? AND StudyInstanceUID = ? GROUP BY 1"));
    query.addBindValue(QLatin1String(copiedFileMarker));
    query.addBindValue(patient.pk);
    query.addBindValue(studyUid);
    return readAll(query,
        [&] { (query.value(0).toBool() ? patient.copies : patient.references) = query.value(1).toInt(); });
}

} // namespace

IndexedPatient indexedPatientOf(
    const QSqlDatabase &db, qlonglong studyPk, const QString &studyUid, QSqlError *error)
{
    IndexedPatient found;
    QSqlError failure = readPatient(db, studyPk, studyUid, found);
    if (found.isFound && !failure.isValid()) {
        failure = listStudies(db, found);
    }
    if (found.isFound && !failure.isValid()) {
        failure = countFiles(db, studyUid, found);
    }
    if (error) {
        *error = failure;
    }
    return failure.isValid() ? IndexedPatient() : found;
}

IndexCorrectionResult correctIndex(const QSqlDatabase &db, const IndexCorrection &correction)
{
    WriteTransaction transaction(db);
    if (!transaction.isActive()) {
        return {Problem::Database, transaction.error()};
    }
    IndexCorrectionResult result = PatientChange(db, correction).run();
    if (result.isGood() && !transaction.commit()) {
        result.problem = Problem::Database;
        result.error = transaction.error();
    }
    return result;
}
