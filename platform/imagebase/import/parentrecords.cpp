#include "parentrecords.h"

#include "recordstatements.h"
#include "uploadstatus.h"

#include <QVariant>

namespace {

constexpr int mostRemembered = 50'000;
/// Between the values of an identity: no DICOM text holds it.
constexpr QChar between(0x1f);

std::size_t at(RecordLevel level)
{
    return static_cast<std::size_t>(level);
}

/// The attributes of an identity may not be NULL: two of them would differ.
QVariant valueOf(const DicomHeader &header, const AttributeInfo &info)
{
    const QString &text = header[info.attribute];
    const bool identity = info.attribute == Attribute::PatientName || info.attribute == Attribute::PatientID
        || info.attribute == Attribute::IssuerOfPatientID || info.attribute == Attribute::PatientBirthDate;
    if (text.isEmpty()) {
        return identity ? QVariant(QLatin1String("")) : QVariant(QVariant::String);
    }
    return text;
}

void bindAttributes(QSqlQuery &query, int position, RecordLevel level, const DicomHeader &header)
{
    for (const AttributeInfo &info : RecordStatements::attributesOf(level)) {
        query.bindValue(position++, valueOf(header, info));
    }
}

std::array<QString, 6> identityOf(const DicomHeader &header)
{
    return {header[Attribute::SeriesInstanceUID], header[Attribute::StudyInstanceUID],
        header[Attribute::PatientID], header[Attribute::PatientName], header[Attribute::PatientBirthDate],
        header[Attribute::IssuerOfPatientID]};
}

const QString &notNull(const QString &text)
{
    static const QString empty = QLatin1String("");
    return text.isNull() ? empty : text;
}

void bindPatient(QSqlQuery &query, int position, const DicomHeader &header)
{
    for (const Attribute attribute :
        {Attribute::IssuerOfPatientID, Attribute::PatientName, Attribute::PatientBirthDate}) {
        query.bindValue(position++, notNull(header[attribute]));
    }
}

} // namespace

ParentRecords::ParentRecords(const QSqlDatabase &db)
    : m_db(db)
    , m_findPatient(db)
    , m_findNamelessPatient(db)
    , m_find{QSqlQuery(db), QSqlQuery(db), QSqlQuery(db)}
    , m_insert{QSqlQuery(db), QSqlQuery(db), QSqlQuery(db)}
{
    const QString otherValues =
        QStringLiteral("IssuerOfPatientID = ? AND PatientName = ? AND PatientBirthDate = ?");
    m_findPatient.prepare(
        QStringLiteral("SELECT pk FROM patient WHERE PatientID = ? AND PatientID <> '' AND ") + otherValues);
    m_findNamelessPatient.prepare(
        QStringLiteral("SELECT patient.pk FROM generalstudy JOIN patient ON patient.pk = patient_fk "
                       "WHERE StudyInstanceUID = ? AND PatientID = '' AND ")
        + otherValues);
    m_find[at(RecordLevel::Study)].prepare(
        QStringLiteral("SELECT pk FROM generalstudy WHERE patient_fk = ? AND StudyInstanceUID = ?"));
    m_find[at(RecordLevel::Series)].prepare(
        QStringLiteral("SELECT pk FROM generalseries WHERE study_fk = ? AND SeriesInstanceUID = ?"));
    for (const RecordLevel level : {RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series}) {
        m_insert[at(level)].prepare(RecordStatements::insert(level));
    }
}

bool ParentRecords::run(QSqlQuery &query)
{
    if (query.exec()) {
        return true;
    }
    m_error = query.lastError();
    return false;
}

qlonglong ParentRecords::seriesOf(const DicomHeader &header)
{
    const std::array<QString, 6> identity = identityOf(header);
    if (m_lastSeries != 0 && identity == m_lastIdentity) {
        return m_lastSeries;
    }
    const qlonglong patientPk = patient(header);
    const qlonglong studyPk = patientPk == 0
        ? 0
        : child(RecordLevel::Study, patientPk, header[Attribute::StudyInstanceUID], header);
    m_lastSeries =
        studyPk == 0 ? 0 : child(RecordLevel::Series, studyPk, header[Attribute::SeriesInstanceUID], header);
    m_lastIdentity = identity;
    return m_lastSeries;
}

qlonglong ParentRecords::patient(const DicomHeader &header)
{
    const QString &id = header[Attribute::PatientID];
    const QString key = id + between + header[Attribute::IssuerOfPatientID] + between
        + header[Attribute::PatientName] + between + header[Attribute::PatientBirthDate] + between
        + (id.isEmpty() ? header[Attribute::StudyInstanceUID] : QString());
    if (const qlonglong pk = m_known[at(RecordLevel::Patient)].value(key)) {
        return pk;
    }
    QSqlQuery &find = id.isEmpty() ? m_findNamelessPatient : m_findPatient;
    find.bindValue(0, id.isEmpty() ? header[Attribute::StudyInstanceUID] : id);
    bindPatient(find, 1, header);
    qlonglong pk = firstKey(find);
    if (pk == 0) {
        pk = insert(RecordLevel::Patient, 0, header);
    }
    return remember(RecordLevel::Patient, key, pk);
}

qlonglong ParentRecords::child(
    RecordLevel level, qlonglong parent, const QString &uid, const DicomHeader &header)
{
    const QString key = QString::number(parent) + between + uid;
    if (const qlonglong pk = m_known[at(level)].value(key)) {
        return pk;
    }
    QSqlQuery &find = m_find[at(level)];
    find.bindValue(0, parent);
    find.bindValue(1, uid);
    qlonglong pk = firstKey(find);
    if (pk == 0) {
        pk = insert(level, parent, header);
    }
    return remember(level, key, pk);
}

qlonglong ParentRecords::remember(RecordLevel level, const QString &key, qlonglong pk)
{
    QHash<QString, qlonglong> &known = m_known[at(level)];
    if (known.size() >= mostRemembered) {
        known.clear();
    }
    known.insert(key, pk);
    return pk;
}

qlonglong ParentRecords::firstKey(QSqlQuery &query)
{
    const qlonglong pk = run(query) && query.next() ? query.value(0).toLongLong() : 0;
    query.finish();
    return pk;
}

qlonglong ParentRecords::insert(RecordLevel level, qlonglong parent, const DicomHeader &header)
{
    QSqlQuery &statement = m_insert[at(level)];
    int position = 0;
    if (level != RecordLevel::Patient) {
        statement.bindValue(position++, parent);
    }
    bindAttributes(statement, position, level, header);
    return run(statement) ? statement.lastInsertId().toLongLong() : 0;
}

bool ParentRecords::noteNewContent(const DicomHeader &header)
{
    const qlonglong seriesPk = seriesOf(header);
    for (const char *sql : {
             "UPDATE generalseries SET Status = :pending WHERE pk = :series AND Status = :uploaded",
             "UPDATE generalstudy SET Status = :pending WHERE Status = :uploaded AND pk = "
             "(SELECT study_fk FROM generalseries WHERE pk = :series)",
             "UPDATE patient SET Status = CASE Status WHEN :uploaded THEN :pending ELSE Status END, "
             "updated_time = datetime('now', 'localtime') WHERE pk = (SELECT patient_fk FROM generalstudy "
             "WHERE pk = (SELECT study_fk FROM generalseries WHERE pk = :series))",
         }) {
        QSqlQuery query(m_db);
        query.prepare(QLatin1String(sql));
        query.bindValue(QStringLiteral(":pending"), UploadStatus::notUploaded());
        query.bindValue(QStringLiteral(":series"), seriesPk);
        query.bindValue(QStringLiteral(":uploaded"), UploadStatus::uploaded());
        if (!run(query)) {
            return false;
        }
    }
    return true;
}

bool ParentRecords::removeEmpty(qlonglong seriesPk)
{
    QSqlQuery query(m_db);
    query.prepare(
        QStringLiteral("SELECT study_fk, patient_fk FROM generalseries "
                       "JOIN generalstudy ON generalstudy.pk = study_fk WHERE generalseries.pk = ?"));
    query.addBindValue(seriesPk);
    if (!run(query) || !query.next()) {
        return false;
    }
    const std::array<std::pair<const char *, qlonglong>, 3> steps{{
        {"DELETE FROM generalseries WHERE pk = ? AND NumberOfSeriesRelatedInstances = 0", seriesPk},
        {"DELETE FROM generalstudy WHERE pk = ? AND NumberOfStudyRelatedSeries = 0",
            query.value(0).toLongLong()},
        {"DELETE FROM patient WHERE pk = ? AND NumberOfPatientRelatedStudies = 0",
            query.value(1).toLongLong()},
    }};
    query.finish();
    for (const auto &[sql, pk] : steps) {
        query.prepare(QLatin1String(sql));
        query.addBindValue(pk);
        if (!run(query)) {
            return false;
        }
    }
    forget();
    return true;
}

void ParentRecords::forget()
{
    m_lastSeries = 0;
    for (QHash<QString, qlonglong> &known : m_known) {
        known.clear();
    }
}
