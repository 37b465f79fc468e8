#include "recordwriter.h"

#include "importmarker.h"
#include "uploadstatus.h"

#include <QVariant>

#include <vector>

namespace {

constexpr int mostRemembered = 50'000;
constexpr int mostWritten = 500'000;
/// Between the values of an identity: no DICOM text holds it.
constexpr QChar between(0x1f);

std::size_t at(RecordLevel level)
{
    return static_cast<std::size_t>(level);
}

QStringList columnsOf(RecordLevel level)
{
    QStringList columns;
    if (const char *parent = recordParentColumn(level)) {
        columns.append(QLatin1String(parent));
    }
    for (const AttributeInfo &info : attributeTable()) {
        if (info.level == level) {
            columns.append(QLatin1Char('"') + QLatin1String(info.keyword) + QLatin1Char('"'));
        }
    }
    if (level == RecordLevel::Image) {
        columns += {QStringLiteral("FilePath"), QStringLiteral("SourcePath"), QStringLiteral("FileSize"),
            QStringLiteral("FileTime"), QStringLiteral("FileInode")};
    }
    return columns;
}

QString insertStatement(RecordLevel level)
{
    const QStringList columns = columnsOf(level);
    QStringList marks;
    marks.reserve(columns.size());
    for (int i = 0; i < columns.size(); ++i) {
        marks.append(QStringLiteral("?"));
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(QLatin1String(recordTableName(level)), columns.join(QLatin1String(", ")),
            marks.join(QLatin1String(", ")));
}

QString updateImageStatement()
{
    return QStringLiteral("UPDATE imageformat SET %1 = ? WHERE pk = ?")
        .arg(columnsOf(RecordLevel::Image).join(QLatin1String(" = ?, ")));
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

int bindAttributes(QSqlQuery &query, int position, RecordLevel level, const DicomHeader &header)
{
    for (const AttributeInfo &info : attributeTable()) {
        if (info.level == level) {
            query.bindValue(position++, valueOf(header, info));
        }
    }
    return position;
}

const std::vector<AttributeInfo> &imageAttributes()
{
    static const std::vector<AttributeInfo> attributes = [] {
        std::vector<AttributeInfo> result;
        for (const AttributeInfo &info : attributeTable()) {
            if (info.level == RecordLevel::Image) {
                result.push_back(info);
            }
        }
        return result;
    }();
    return attributes;
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

RecordWriter::RecordWriter(const QSqlDatabase &db)
    : m_db(db)
    , m_find(db,
          QStringLiteral("SELECT pk, series_fk, FilePath, SourcePath, FileSize, FileTime, FileInode, "
                         "IrradiationEventUID FROM imageformat WHERE SOPInstanceUID = ?"))
    , m_insertImage(db, insertStatement(RecordLevel::Image))
    , m_updateImage(db, updateImageStatement())
    , m_findPatient(db)
    , m_findNamelessPatient(db)
    , m_findChild{QSqlQuery(db), QSqlQuery(db), QSqlQuery(db)}
    , m_insertRecord{QSqlQuery(db), QSqlQuery(db), QSqlQuery(db)}
{
    const QString otherValues =
        QStringLiteral("IssuerOfPatientID = ? AND PatientName = ? AND PatientBirthDate = ?");
    m_findPatient.prepare(
        QStringLiteral("SELECT pk FROM patient WHERE PatientID = ? AND PatientID <> '' AND ") + otherValues);
    m_findNamelessPatient.prepare(
        QStringLiteral("SELECT patient.pk FROM generalstudy JOIN patient ON patient.pk = patient_fk "
                       "WHERE StudyInstanceUID = ? AND PatientID = '' AND ")
        + otherValues);
    m_findChild[at(RecordLevel::Study)].prepare(
        QStringLiteral("SELECT pk FROM generalstudy WHERE patient_fk = ? AND StudyInstanceUID = ?"));
    m_findChild[at(RecordLevel::Series)].prepare(
        QStringLiteral("SELECT pk FROM generalseries WHERE study_fk = ? AND SeriesInstanceUID = ?"));
    for (const RecordLevel level : {RecordLevel::Patient, RecordLevel::Study, RecordLevel::Series}) {
        m_insertRecord[at(level)].prepare(insertStatement(level));
    }
    QSqlQuery any(m_db);
    m_writtenIsAll = any.exec(QStringLiteral("SELECT 1 FROM imageformat LIMIT 1")) && !any.next();
}

/// An import into an empty index need not ask it about each file. A hash met twice only costs the question.
bool RecordWriter::isKnown(const QString &sopInstanceUid) const
{
    return !m_writtenIsAll || m_written.contains(qHash(sopInstanceUid));
}

void RecordWriter::remember(const QString &sopInstanceUid)
{
    if (m_writtenIsAll) {
        m_written.insert(qHash(sopInstanceUid));
    }
    if (m_written.size() > mostWritten) {
        m_writtenIsAll = false;
        m_written.clear();
    }
}

bool RecordWriter::run(QSqlQuery &query)
{
    if (query.exec()) {
        return true;
    }
    m_error = query.lastError();
    return false;
}

bool RecordWriter::find(const QString &sopInstanceUid, std::optional<KnownInstance> *known)
{
    if (!isKnown(sopInstanceUid)) {
        return true;
    }
    m_find.bind(0, sopInstanceUid);
    const NativeStatement::Step step = m_find.step();
    if (step == NativeStatement::Step::Row) {
        KnownInstance &found = known->emplace();
        found.pk = m_find.integer(0);
        found.seriesPk = m_find.integer(1);
        found.place.filePath = m_find.text(2);
        found.place.sourcePath = m_find.text(3);
        found.place.stamp.size = m_find.integer(4);
        found.place.stamp.time = m_find.integer(5);
        found.place.stamp.inode = static_cast<quint64>(m_find.integer(6));
        found.place.copied = m_find.text(7) == QLatin1String(copiedFileMarker);
    } else if (step == NativeStatement::Step::Failed) {
        m_error = m_find.error();
    }
    m_find.reset();
    return step != NativeStatement::Step::Failed;
}

bool RecordWriter::insert(const DicomHeader &header, const FilePlace &place)
{
    const qlonglong seriesPk = series(header);
    if (seriesPk == 0) {
        return false;
    }
    remember(header[Attribute::SOPInstanceUID]);
    return writeImage(m_insertImage, seriesPk, header, place);
}

bool RecordWriter::replace(const KnownInstance &known, const DicomHeader &header, const FilePlace &place)
{
    const qlonglong seriesPk = series(header);
    if (seriesPk == 0) {
        return false;
    }
    bool written = false;
    if (isCondemned(known)) {
        written = removeImage(known.pk) && writeImage(m_insertImage, seriesPk, header, place);
    } else {
        m_updateImage.bind(columnsOf(RecordLevel::Image).size(), known.pk);
        written = writeImage(m_updateImage, seriesPk, header, place);
    }
    return written && (seriesPk == known.seriesPk || removeEmptyParents(known.seriesPk));
}

void RecordWriter::lookForDeletions()
{
    QSqlQuery query(m_db);
    const bool good =
        query.exec(QStringLiteral("SELECT ifnull(max(LastImage), 0) FROM deletion")) && query.next();
    m_lastCondemned = good ? query.value(0).toLongLong() : 0;
}

bool RecordWriter::isCondemned(const KnownInstance &known) const
{
    if (known.pk > m_lastCondemned) {
        return false;
    }
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT 1 FROM deletion, imageformat AS image "
                                 "JOIN generalseries AS series ON series.pk = series_fk "
                                 "JOIN generalstudy AS study ON study.pk = study_fk "
                                 "WHERE image.pk = ? AND image.pk <= LastImage AND EXISTS "
                                 "(SELECT 1 FROM json_each(RecordKeys) WHERE value = CASE Level "
                                 "WHEN %1 THEN patient_fk WHEN %2 THEN study_fk WHEN %3 THEN series_fk "
                                 "ELSE image.pk END)")
                      .arg(int(RecordLevel::Patient))
                      .arg(int(RecordLevel::Study))
                      .arg(int(RecordLevel::Series)));
    query.addBindValue(known.pk);
    return query.exec() && query.next();
}

bool RecordWriter::removeImage(qlonglong pk)
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("DELETE FROM imageformat WHERE pk = ?"));
    query.addBindValue(pk);
    return run(query);
}

bool RecordWriter::writeImage(
    NativeStatement &statement, qlonglong seriesPk, const DicomHeader &header, const FilePlace &place)
{
    // The marker is ours alone: a file that claims it must not be taken for a copy and removed one day.
    static const QString marker = QLatin1String(copiedFileMarker);
    int next = 0;
    statement.bind(next++, seriesPk);
    for (const AttributeInfo &info : imageAttributes()) {
        const QString &text = header[info.attribute];
        const bool ours = info.attribute == Attribute::IrradiationEventUID;
        if (ours && place.copied) {
            statement.bind(next++, marker);
        } else if (text.isEmpty() || (ours && text == marker)) {
            statement.bindNull(next++);
        } else {
            statement.bind(next++, text);
        }
    }
    statement.bind(next++, place.filePath);
    statement.bind(next++, place.sourcePath);
    statement.bind(next++, place.stamp.size);
    statement.bind(next++, place.stamp.time);
    statement.bind(next, static_cast<qint64>(place.stamp.inode));
    const bool good = statement.step() == NativeStatement::Step::Done;
    if (!good) {
        m_error = statement.error();
    }
    statement.reset();
    return good;
}

bool RecordWriter::noteNewContent(const DicomHeader &header)
{
    const qlonglong seriesPk = series(header);
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

bool RecordWriter::noteObsolete(const QString &filePath)
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("INSERT OR IGNORE INTO obsoletefile (FilePath) VALUES (?)"));
    query.addBindValue(filePath);
    return run(query);
}

bool RecordWriter::isObsolete(const QString &filePath) const
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("SELECT 1 FROM obsoletefile WHERE FilePath = ?"));
    query.addBindValue(filePath);
    // In doubt the file stays.
    return !query.exec() || query.next();
}

void RecordWriter::forgetAll()
{
    forgetParents();
    m_writtenIsAll = false;
    m_written.clear();
}

void RecordWriter::forgetParents()
{
    m_lastSeries = 0;
    for (QHash<QString, qlonglong> &known : m_known) {
        known.clear();
    }
}

qlonglong RecordWriter::series(const DicomHeader &header)
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

qlonglong RecordWriter::patient(const DicomHeader &header)
{
    const QString &id = header[Attribute::PatientID];
    const QString key = id + between + header[Attribute::IssuerOfPatientID] + between
        + header[Attribute::PatientName] + between + header[Attribute::PatientBirthDate] + between
        + (id.isEmpty() ? header[Attribute::StudyInstanceUID] : QString());
    QHash<QString, qlonglong> &known = m_known[at(RecordLevel::Patient)];
    if (const qlonglong pk = known.value(key)) {
        return pk;
    }
    QSqlQuery &find = id.isEmpty() ? m_findNamelessPatient : m_findPatient;
    find.bindValue(0, id.isEmpty() ? header[Attribute::StudyInstanceUID] : id);
    bindPatient(find, 1, header);
    qlonglong pk = firstKey(find);
    if (pk == 0) {
        pk = insertRecord(RecordLevel::Patient, 0, header);
    }
    if (known.size() >= mostRemembered) {
        known.clear();
    }
    known.insert(key, pk);
    return pk;
}

qlonglong RecordWriter::child(
    RecordLevel level, qlonglong parent, const QString &uid, const DicomHeader &header)
{
    QHash<QString, qlonglong> &known = m_known[at(level)];
    const QString key = QString::number(parent) + between + uid;
    if (const qlonglong pk = known.value(key)) {
        return pk;
    }
    QSqlQuery &find = m_findChild[at(level)];
    find.bindValue(0, parent);
    find.bindValue(1, uid);
    qlonglong pk = firstKey(find);
    if (pk == 0) {
        pk = insertRecord(level, parent, header);
    }
    if (known.size() >= mostRemembered) {
        known.clear();
    }
    known.insert(key, pk);
    return pk;
}

qlonglong RecordWriter::firstKey(QSqlQuery &query)
{
    const qlonglong pk = run(query) && query.next() ? query.value(0).toLongLong() : 0;
    query.finish();
    return pk;
}

qlonglong RecordWriter::insertRecord(RecordLevel level, qlonglong parent, const DicomHeader &header)
{
    QSqlQuery &insert = m_insertRecord[at(level)];
    int position = 0;
    if (level != RecordLevel::Patient) {
        insert.bindValue(position++, parent);
    }
    bindAttributes(insert, position, level, header);
    return run(insert) ? insert.lastInsertId().toLongLong() : 0;
}

bool RecordWriter::removeEmptyParents(qlonglong seriesPk)
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
    forgetParents();
    return true;
}
