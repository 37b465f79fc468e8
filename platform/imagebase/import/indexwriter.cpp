#include "indexwriter.h"

#include "archivemember.h"
#include "databaseerror.h"
#include "filecompare.h"
#include "filecopy.h"
#include "systemtext.h"

#include <QFile>
#include <QFileInfo>
#include <QVariant>

#include <cerrno>
#include <unistd.h>

namespace {

struct Verdict
{
    FileVerdict verdict;
    FileReason reason;
};

Verdict verdictOf(DicomReadResult::Outcome outcome)
{
    using Outcome = DicomReadResult::Outcome;
    switch (outcome) {
    case Outcome::MediaDirectory:
        return {FileVerdict::MediaDirectory, FileReason::None};
    case Outcome::NotDicom:
        return {FileVerdict::NotDicom, FileReason::NotDicom};
    case Outcome::Unreadable:
        return {FileVerdict::Unreadable, FileReason::Damaged};
    case Outcome::NoPatientOrStudy:
        return {FileVerdict::Refused, FileReason::NoPatientOrStudy};
    case Outcome::MissingUid:
        return {FileVerdict::Refused, FileReason::MissingUid};
    case Outcome::MalformedUid:
        return {FileVerdict::Refused, FileReason::MalformedUid};
    case Outcome::CannotOpen:
    case Outcome::Image:
        break;
    }
    return {FileVerdict::Skipped, FileReason::ReadFailed};
}

bool isForbidden(const QByteArray &path)
{
    return access(path.constData(), R_OK) != 0 && errno == EACCES;
}

} // namespace

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
    if (isDiskFull(file.file.systemError)) {
        failOnCopy(file.file.systemError);
        return false;
    }
    if (file.file.reason != FileReason::None) {
        countIssue(file, FileVerdict::Skipped, file.file.reason, file.file.detail);
        return true;
    }
    if (file.known) {
        m_batch.count(FileVerdict::AlreadyThere);
        return true;
    }
    if (file.result.outcome != DicomReadResult::Outcome::Image) {
        Verdict verdict = verdictOf(file.result.outcome);
        if (verdict.reason == FileReason::ReadFailed && isForbidden(file.file.path)) {
            verdict.reason = FileReason::NoPermission;
        }
        countIssue(file, verdict.verdict, verdict.reason, file.result.detail);
        return true;
    }
    return writeImage(file);
}

bool IndexWriter::writeImage(ReadFile &file)
{
    if (isDiskFull(file.copyError)) {
        failOnCopy(file.copyError);
        return false;
    }
    if (file.copyError != 0) {
        countIssue(file, FileVerdict::Refused, FileReason::CopyFailed, systemText(file.copyError));
        return true;
    }
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
        drop(file);
        m_batch.count(FileVerdict::AlreadyThere);
        return !sameSource || known.place.stamp == file.file.stamp || refreshPlace(file, known);
    }
    if (!same && !replaceable && !m_records.isCondemned(known)
        && m_request.policy == DuplicatePolicy::KeepOld) {
        FileStore::discard(file.temporaryPath);
        countIssue(file, FileVerdict::AlreadyThere, FileReason::OtherContentKept, known.place.filePath);
        return true;
    }
    if (!put(file, &known)) {
        return false;
    }
    if (!same && !missing && !m_records.noteNewContent(file.result.header)) {
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
        const int error = bringIn(file, place.filePath);
        if (error != 0) {
            file.copyError = error;
            failOnCopy(error);
            return false;
        }
        m_placed.append(place.filePath);
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

/// @return errno, 0 for success
int IndexWriter::bringIn(ReadFile &file, const QString &path)
{
    if (file.taken) {
        const int error = m_store.take(file.file.path, path, m_cancelled);
        if (error == 0) {
            m_taken.append(file.file.path);
        }
        return error;
    }
    const int error = m_store.place(file.temporaryPath, path);
    if (error == 0) {
        file.temporaryPath.clear();
    }
    return error;
}

/// The index has these bytes already.
void IndexWriter::drop(ReadFile &file)
{
    FileStore::discard(file.temporaryPath);
    if (file.taken) {
        m_taken.append(file.file.path);
    }
}

QString IndexWriter::placeFor(const ReadFile &file, const KnownInstance *known) const
{
    // A place that waits for its old file to be removed is not free for a new one: it would go with it.
    const QString old = known ? QFileInfo(known->place.filePath).canonicalFilePath() : QString();
    return m_store.freePlaceFor(file.result.header, [this, known, &old](const QString &path) {
        return (!old.isEmpty() && QFileInfo(path).canonicalFilePath() == old)
            || (known && m_placed.contains(path)) || m_obsoleteFiles.contains(path);
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
        m_store.syncNames(m_placed);
    }
    const QSqlError uncounted = m_placed.isEmpty() ? QSqlError() : m_mark.count(m_db);
    if (uncounted.isValid() || !m_transaction->commit()) {
        failOn(uncounted.isValid() ? uncounted : m_transaction->error());
        abandon();
        return false;
    }
    m_transaction.reset();
    if (!m_placed.isEmpty()) {
        m_mark.note();
    }
    m_report.add(m_batch);
    m_batch = {};
    m_placed.clear();
    for (const QByteArray &path : qAsConst(m_taken)) {
        FileStore::discard(path);
    }
    m_taken.clear();
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
    // Under the lock: another writer may take the same place as soon as that is free. What was to be taken
    // still has its first name.
    for (const QString &path : qAsConst(m_placed)) {
        QFile::remove(path);
    }
    m_placed.clear();
    m_transaction.reset();
    m_taken.clear();
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

void IndexWriter::countIssue(
    const ReadFile &file, FileVerdict verdict, FileReason reason, const QString &detail)
{
    const QString archive = file.file.member ? file.file.member->archive : QString();
    m_batch.count(ImportIssue{QFile::decodeName(file.file.path), verdict, reason, detail, archive});
}
