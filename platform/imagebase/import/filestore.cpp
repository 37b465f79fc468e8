#include "filestore.h"

#include "filecopy.h"
#include "filedescriptor.h"
#include "namesync.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QStorageInfo>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char incomingFolder[] = ".incoming";
/// Some file systems take long to find room for one more file in a folder that had thousands.
constexpr int filesOfIncomingFolder = 64;
constexpr char fileSuffix[] = ".dcm";
constexpr int identityDigits = 10;
constexpr int longestReadable = 40;

/// Part of a folder name that people recognise: the safe characters of an id.
QString readable(const QString &id)
{
    QString result;
    for (const QChar c : id.left(longestReadable)) {
        const bool safe =
            c.unicode() < 128 && (c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_'));
        result.append(safe ? c : QLatin1Char('_'));
    }
    return result.isEmpty() ? QStringLiteral("noid") : result;
}

QString patientFolder(const DicomHeader &header)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const Attribute attribute : {Attribute::PatientID, Attribute::IssuerOfPatientID,
             Attribute::PatientName, Attribute::PatientBirthDate}) {
        hash.addData(header[attribute].toUtf8());
        hash.addData("\n", 1);
    }
    return readable(header[Attribute::PatientID]) + QLatin1Char('-')
        + QString::fromLatin1(hash.result().toHex().left(identityDigits));
}

bool knowsNoSecondNames(int error)
{
    return error == EPERM || error == EXDEV || error == EOPNOTSUPP || error == ENOSYS || error == EMLINK;
}

void syncPath(const QByteArray &path)
{
    const FileDescriptor file(open(path.constData(), O_RDONLY | O_CLOEXEC));
    if (file >= 0) {
        fsync(file);
    }
}

} // namespace

QString storeFolder(const QString &databasePath)
{
    return QFileInfo(databasePath).absoluteDir().absoluteFilePath(QStringLiteral("store"));
}

FileStore::FileStore(const QString &databasePath)
    : m_folder(storeFolder(databasePath))
    , m_incoming(QFile::encodeName(m_folder) + '/' + incomingFolder)
{ }

void FileStore::sweepTemporaryFiles() const
{
    const QDir incoming(QFile::decodeName(m_incoming));
    for (const QString &name : incoming.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const pid_t owner = name.section(QLatin1Char('-'), 0, 0).toInt();
        const bool alive = owner > 0 && (kill(owner, 0) == 0 || errno == EPERM);
        if (!alive) {
            QDir(incoming.filePath(name)).removeRecursively();
        }
    }
    rmdir(m_incoming.constData());
}

FileStore::~FileStore()
{
    for (int number = 0; number < m_serial; number += filesOfIncomingFolder) {
        rmdir(incomingFolderOf(number).constData());
    }
    rmdir(m_incoming.constData());
}

QByteArray FileStore::incomingFolderOf(int number) const
{
    return m_incoming + '/' + QByteArray::number(getpid()) + '-'
        + QByteArray::number(reinterpret_cast<quintptr>(this), 16) + '-'
        + QByteArray::number(number / filesOfIncomingFolder);
}

FileStore::Copy FileStore::copyIn(const QByteArray &source, const std::atomic<bool> &cancelled)
{
    Copy copy;
    const FileDescriptor from(open(source.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (from < 0) {
        copy.systemError = errno;
        return copy;
    }
    const Temporary temporary = makeTemporary();
    const FileDescriptor to(temporary.descriptor);
    copy.systemError = to < 0 ? temporary.systemError : copyBytes(from, to, cancelled);
    if (copy.systemError == 0) {
        copy.temporaryPath = temporary.path;
    } else {
        discard(temporary.path);
    }
    return copy;
}

FileStore::Temporary FileStore::makeTemporary()
{
    const int number = m_serial++;
    const QByteArray folder = incomingFolderOf(number);
    Temporary made;
    made.path = folder + '/' + QByteArray::number(number);
    const auto make = [&made] {
        made.descriptor = open(made.path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        made.systemError = made.descriptor < 0 ? errno : 0;
    };
    make();
    if (made.systemError == ENOENT && QDir().mkpath(QFile::decodeName(folder))) {
        make();
    }
    return made;
}

qint64 FileStore::bytesFree() const
{
    return QStorageInfo(QFileInfo(m_folder).path()).bytesAvailable();
}

bool FileStore::isPlace(const QString &path)
{
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("[\\w-]+-[0-9a-f]{%1}(/[0-9.]+){2}/[0-9.]+(-[0-9]+)?%2")
            .arg(identityDigits)
            .arg(QRegularExpression::escape(QLatin1String(fileSuffix)))));
    return form.match(path).hasMatch();
}

QString FileStore::placeFor(const DicomHeader &header) const
{
    return m_folder + QLatin1Char('/') + patientFolder(header) + QLatin1Char('/')
        + header[Attribute::StudyInstanceUID] + QLatin1Char('/') + header[Attribute::SeriesInstanceUID]
        + QLatin1Char('/') + header[Attribute::SOPInstanceUID] + QLatin1String(fileSuffix);
}

int FileStore::place(const QByteArray &temporaryPath, const QString &path)
{
    return inFolderOf(path, [&] {
        return std::rename(temporaryPath.constData(), QFile::encodeName(path).constData()) == 0 ? 0 : errno;
    });
}

/// Runs what answers errno, and again with the folder made where that was missing.
int FileStore::inFolderOf(const QString &path, const std::function<int()> &action)
{
    const QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
    // The folder made last is most often the one wanted, unless somebody emptied and removed it since.
    int error = folder == m_lastFolder ? action() : ENOENT;
    if (error == ENOENT) {
        error = QDir().mkpath(folder) ? action() : EACCES;
        m_lastFolder = folder;
    }
    return error;
}

int FileStore::take(const QByteArray &source, const QString &path, const std::atomic<bool> &cancelled)
{
    const QByteArray target = QFile::encodeName(path);
    struct stat status = {};
    if (source == target || lstat(source.constData(), &status) != 0) {
        return source == target ? EINVAL : errno;
    }
    return inFolderOf(path, [&] {
        // A rename over another name of the same file would do nothing, so what lies there goes first.
        unlink(target.constData());
        // Of a link the file behind it is wanted, and not its name.
        const bool linked = S_ISREG(status.st_mode) && link(source.constData(), target.constData()) == 0;
        if (linked || (S_ISREG(status.st_mode) && !knowsNoSecondNames(errno))) {
            return linked ? 0 : errno;
        }
        const int error = copyIntoPlace(source, target, cancelled);
        if (error == 0) {
            syncPath(target);
        }
        return error;
    });
}

void FileStore::syncNames(const QStringList &paths) const
{
    if (paths.isEmpty()) {
        return;
    }
    const FileDescriptor store(open(QFile::encodeName(m_folder).constData(), O_RDONLY | O_CLOEXEC));
    const bool lastIsEnough = store >= 0 && syncsNames(store);
    QSet<QString> folders;
    for (const QString &path : paths) {
        QString folder = path;
        while (folder.size() > m_folder.size()) {
            folder.truncate(folder.lastIndexOf(QLatin1Char('/')));
            if (folders.contains(folder)) {
                break;
            }
            folders.insert(folder);
            if (lastIsEnough) {
                break;
            }
        }
    }
    for (const QString &folder : qAsConst(folders)) {
        syncPath(QFile::encodeName(folder));
    }
}

void FileStore::discard(const QByteArray &temporaryPath)
{
    if (!temporaryPath.isEmpty()) {
        unlink(temporaryPath.constData());
    }
}

QString FileStore::freePlaceFor(const DicomHeader &header, const IsTaken &isTaken) const
{
    const QString place = placeFor(header);
    QString candidate = place;
    for (int i = 2; isTaken(candidate); ++i) {
        candidate = place.chopped(int(qstrlen(fileSuffix))) + QLatin1Char('-') + QString::number(i)
            + QLatin1String(fileSuffix);
    }
    return candidate;
}
