#include "filestore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

#include <array>
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
constexpr std::size_t copyStep = 4U << 20U;
constexpr char fileSuffix[] = ".dcm";
constexpr int identityDigits = 10;
constexpr int longestReadable = 40;

class Descriptor
{
public:
    explicit Descriptor(int fd)
        : m_fd(fd)
    { }
    ~Descriptor()
    {
        if (m_fd >= 0) {
            close(m_fd);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    operator int() const { return m_fd; }

private:
    int m_fd;
};

int writeAll(int to, const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(to, bytes, size);
        if (written < 0) {
            return errno;
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return 0;
}

/// Where the kernel cannot copy between these two files.
int copyThroughMemory(int from, int to, const std::atomic<bool> &cancelled)
{
    constexpr std::size_t bufferSize = 256U << 10U;
    thread_local std::array<char, bufferSize> buffer;
    for (;;) {
        const ssize_t count = read(from, buffer.data(), buffer.size());
        if (count == 0) {
            return 0;
        }
        const int error = count < 0 ? errno : writeAll(to, buffer.data(), static_cast<std::size_t>(count));
        if (error != 0) {
            return error;
        }
        if (cancelled) {
            return ECANCELED;
        }
    }
}

int copyBytes(int from, int to, const std::atomic<bool> &cancelled)
{
    bool any = false;
    for (;;) {
        const ssize_t count = copy_file_range(from, nullptr, to, nullptr, copyStep, 0);
        if (count == 0 && any) {
            return 0;
        }
        if (count <= 0) {
            // Nothing copied yet: special file systems answer 0 or an error here and are read plainly.
            const bool unable = !any
                && (count == 0 || errno == EXDEV || errno == EINVAL || errno == EOPNOTSUPP
                    || errno == ENOSYS);
            return unable ? copyThroughMemory(from, to, cancelled) : errno;
        }
        any = true;
        if (cancelled) {
            return ECANCELED;
        }
    }
}

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

} // namespace

FileStore::FileStore(const QString &databasePath)
    : m_folder(QFileInfo(databasePath).absoluteDir().absoluteFilePath(QStringLiteral("store")))
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
    const Descriptor from(open(source.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (from < 0) {
        copy.systemError = errno;
        return copy;
    }
    const int number = m_serial++;
    const QByteArray folder = incomingFolderOf(number);
    QByteArray name = folder + '/' + QByteArray::number(number);
    int fd = open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0 && errno == ENOENT && QDir().mkpath(QFile::decodeName(folder))) {
        fd = open(name.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    }
    const Descriptor to(fd);
    copy.systemError = to < 0 ? errno : copyBytes(from, to, cancelled);
    if (copy.systemError == 0) {
        copy.temporaryPath = name;
    } else {
        discard(name);
    }
    return copy;
}

QString FileStore::placeFor(const DicomHeader &header) const
{
    return m_folder + QLatin1Char('/') + patientFolder(header) + QLatin1Char('/')
        + header[Attribute::StudyInstanceUID] + QLatin1Char('/') + header[Attribute::SeriesInstanceUID]
        + QLatin1Char('/') + header[Attribute::SOPInstanceUID] + QLatin1String(fileSuffix);
}

int FileStore::place(const QByteArray &temporaryPath, const QString &path)
{
    const QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
    const auto rename = [&] {
        return std::rename(temporaryPath.constData(), QFile::encodeName(path).constData()) == 0 ? 0 : errno;
    };
    // The folder made last is most often the one wanted, unless somebody emptied and removed it since.
    int error = folder == m_lastFolder ? rename() : ENOENT;
    if (error == ENOENT) {
        error = QDir().mkpath(folder) ? rename() : EACCES;
        m_lastFolder = folder;
    }
    return error;
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

void FileStore::removeObsolete(const QSqlDatabase &db)
{
    QStringList done;
    QSqlQuery query(db);
    query.exec(QStringLiteral("SELECT FilePath FROM obsoletefile"));
    while (query.next()) {
        const QString path = query.value(0).toString();
        if (QFile::remove(path) || !QFile::exists(path)) {
            done.append(path);
        }
    }
    query.finish();
    query.prepare(QStringLiteral("DELETE FROM obsoletefile WHERE FilePath = ?"));
    for (const QString &path : done) {
        query.bindValue(0, path);
        query.exec();
    }
}
