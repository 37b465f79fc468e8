#include "indexwriter.h"

#include "databaseerror.h"
#include "filecompare.h"
#include "filecopy.h"
#include "fileissue.h"
#include "systemtext.h"

#include <QFile>
#include <QFileInfo>
#include <QVariant>

IndexWriter::IndexWriter(const ImportRequest &request, const IndexConnection &connection, FileStore &store,
    const std::atomic<bool> &cancelled)
    : m_request(request)
    , m_db(connection.database())
    , m_store(store)
    , m_cancelled(cancelled)
    , m_dataVersion(dataVersion())
    , m_records(m_db)
    , m_obsoleteFiles(m_db)
    , m_mark(store.folder())
    , m_files(store, cancelled)
{
    // What was taken has no other copy: its record must last before its first name goes.
    if (request.mode == ImportMode::Take && request.synced) {
        IndexConnection::syncEveryCommit(m_db);
    }
}

IndexWriter::~IndexWriter()
{
    abandon();
}

bool IndexWriter::begin(bool lastTry)
{
    auto transaction = std::make_unique<WriteTransaction>(m_db);
    if (!transaction->isActive()) {
        if (lastTry) {
            failOn(transaction->error());
        }
        return false;
    }
    m_transaction = std::move(transaction);
    m_records.lookForDeletions();
    m_mark.begin(m_db);
    const qint64 version = dataVersion();
    if (version != m_dataVersion) {
        m_records.forgetAll();
        m_dataVersion = version;
    }
    return true;
}

qint64 IndexWriter::dataVersion() const
{
    QSqlQuery query(m_db);
    return query.exec(QStringLiteral("PRAGMA data_version")) && query.next() ? query.value(0).toLongLong()
                                                                             : -1;
}

bool IndexWriter::write(ReadFile &file)
{
    const int issues = m_batch.issues().size();
    const bool isGood = writeFile(file);
    m_hasTakenLast = isGood && m_batch.issues().size() == issues;
    return isGood;
}

bool IndexWriter::writeFile(ReadFile &file)
{
    for (const int systemError : {file.file.systemError, file.copyError}) {
        if (isDiskFull(systemError)) {
            failOnCopy(systemError);
            return false;
        }
    }
    if (file.known) {
        m_batch.count(FileVerdict::AlreadyThere);
        return true;
    }
    if (const std::optional<ImportIssue> issue = fileIssueOf(file)) {
        m_batch.count(*issue);
        return true;
    }
    return writeImage(file);
}

bool IndexWriter::writeImage(ReadFile &file)
{
    std::optional<KnownInstance> known;
    if (!m_records.find(file.result.header[Attribute::SOPInstanceUID], &known)) {
        return failOnDatabase();
    }
    if (known) {
        return writeKnown(file, *known);
    }
    if (!put(file, nullptr)) {
        return false;
    }
    m_batch.count(FileVerdict::New);
    return true;
}

bool IndexWriter::writeKnown(ReadFile &file, const KnownInstance &known)
{
    const bool sameSource = known.source() == QFile::decodeName(file.file.path);
    const bool missing = !QFile::exists(known.place.filePath);
    // A referenced file that changed where it lies: there is no old one left to keep.
    const bool changedInPlace = sameSource && !known.place.copied && !(known.place.stamp == file.file.stamp);
    const bool replaceable = missing || changedInPlace;
    const bool same = !replaceable && isSameContent(file, known);
    if (m_cancelled) {
        return false; // the comparison may not have come to its end
    }
    const bool toBeCopied = m_request.mode == ImportMode::Copy && !known.place.copied;
    const bool toBeNew = toBeCopied || m_records.isCondemned(known);
    if (same && !toBeNew) {
        m_files.drop(file);
        m_batch.count(FileVerdict::AlreadyThere);
        return !sameSource || known.place.stamp == file.file.stamp || refreshPlace(file, known);
    }
    if (!same && !replaceable && !m_records.isCondemned(known)
        && m_request.policy == DuplicatePolicy::KeepOld) {
        FileStore::discard(file.temporaryPath);
        m_batch.count(
            fileIssue(file, FileVerdict::AlreadyThere, FileReason::OtherContentKept, known.place.filePath));
        return true;
    }
    if (!put(file, &known)) {
        return false;
    }
    // What has gone cannot be compared any more; its stamp says whether this may be another one.
    const bool mayBeOther = missing
        && (known.place.stamp.size != file.file.stamp.size || known.place.stamp.time != file.file.stamp.time);
    if ((mayBeOther && !m_records.unflag(file.result.header))
        || (!same && !missing && !m_records.noteNewContent(file.result.header))) {
        return failOnDatabase();
    }
    m_batch.count(FileVerdict::Replaced);
    return true;
}

bool IndexWriter::isSameContent(const ReadFile &file, const KnownInstance &known) const
{
    const QByteArray indexed = QFile::encodeName(known.place.filePath);
    const QByteArray &own = file.temporaryPath.isEmpty() ? file.file.path : file.temporaryPath;
    return indexed == own || sameBytes(indexed, own, m_cancelled)
        || (file.taken && sameDataSets(indexed, own, m_cancelled));
}

/// Brings the file to its place and writes its record: a new one, or known's.
bool IndexWriter::put(ReadFile &file, const KnownInstance *known)
{
    FilePlace place;
    place.filePath = QFile::decodeName(file.file.path);
    place.stamp = file.file.stamp;
    if (file.taken || !file.temporaryPath.isEmpty()) {
        place.sourcePath = file.taken ? QString() : place.filePath;
        place.copied = true;
        place.filePath = placeFor(file, known);
        const int error = m_files.bringIn(file, place.filePath);
        if (error != 0) {
            file.copyError = error;
            failOnCopy(error);
            return false;
        }
    }
    const bool written = known ? m_records.replace(*known, file.result.header, place)
                               : m_records.insert(file.result.header, place);
    if (!written) {
        return failOnDatabase();
    }
    if (known && known->place.copied && known->place.filePath != place.filePath) {
        m_obsolete = true;
        return m_obsoleteFiles.note(known->place.filePath) || failOn(m_obsoleteFiles.error());
    }
    return true;
}

QString IndexWriter::placeFor(const ReadFile &file, const KnownInstance *known) const
{
    // A place that waits for its old file to be removed is not free for a new one: it would go with it.
    const QString old = known ? QFileInfo(known->place.filePath).canonicalFilePath() : QString();
    return m_store.freePlaceFor(file.result.header, [this, known, &old](const QString &path) {
        return (!old.isEmpty() && QFileInfo(path).canonicalFilePath() == old)
            || (known && m_files.hasBrought(path)) || m_obsoleteFiles.contains(path);
    });
}

/// The source was touched without changing: next time its new stamp says so at once.
bool IndexWriter::refreshPlace(const ReadFile &file, const KnownInstance &known)
{
    FilePlace place = known.place;
    place.stamp = file.file.stamp;
    return m_records.replace(known, file.result.header, place) || failOnDatabase();
}

bool IndexWriter::commit()
{
    if (m_request.mode == ImportMode::Take && m_request.synced) {
        m_files.syncNames();
    }
    const QSqlError uncounted = m_files.hasBroughtAny() ? m_mark.count(m_db) : QSqlError();
    if (uncounted.isValid() || !m_transaction->commit()) {
        failOn(uncounted.isValid() ? uncounted : m_transaction->error());
        abandon();
        return false;
    }
    m_transaction.reset();
    if (m_files.hasBroughtAny()) {
        m_mark.note();
    }
    m_report.add(m_batch);
    m_batch = {};
    m_files.keep();
    if (m_obsolete) {
        m_obsoleteFiles.remove();
        m_obsolete = false;
    }
    return true;
}

void IndexWriter::resume()
{
    m_end = ImportEnd::Complete;
    m_endDetail.clear();
}

void IndexWriter::abandon()
{
    m_files.undo();
    m_transaction.reset();
    m_batch = {};
    m_obsolete = false;
    m_records.forgetParents();
}

/// @return false
bool IndexWriter::failOn(const QSqlError &error)
{
    const ConnectionFailure failure = connectionFailureOf(error, m_request.databasePath);
    m_end =
        failure.reason == ConnectionFailure::Reason::DiskFull ? ImportEnd::DiskFull : ImportEnd::IndexFailed;
    m_endDetail = failure.detail;
    return false;
}

bool IndexWriter::failOnDatabase()
{
    return failOn(m_records.error());
}

void IndexWriter::failOnCopy(int systemError)
{
    m_end = isDiskFull(systemError) ? ImportEnd::DiskFull : ImportEnd::IndexFailed;
    m_endDetail = systemText(systemError);
}
