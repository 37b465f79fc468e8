#include "sitekey.h"

#include "configlocation.h"
#include "createconnection.h"
#include "filecopy.h"
#include "filedescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSettings>
#include <QStandardPaths>

#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr char fileName[] = "anonymise.key";
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

SiteKey::Result failed(SiteKey::Problem problem, int systemError = 0)
{
    return {{}, problem, systemError != 0 ? qt_error_string(systemError) : QString()};
}

QByteArray randomKey()
{
    std::array<quint32, SiteKey::length / sizeof(quint32)> words{};
    QRandomGenerator::system()->fillRange(words.data(), qsizetype(words.size()));
    return QByteArray(reinterpret_cast<const char *>(words.data()), SiteKey::length);
}

SiteKey::Result read(const QByteArray &path)
{
    const FileDescriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    struct stat status = {};
    if (file < 0 || ::fstat(file, &status) != 0) {
        return failed(SiteKey::Problem::CannotRead, errno);
    }
    if (!S_ISREG(status.st_mode) || status.st_size != SiteKey::length) {
        return failed(SiteKey::Problem::NotAKey);
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0 || status.st_uid != ::geteuid()) {
        return failed(SiteKey::Problem::NotPrivate);
    }
    QByteArray key(SiteKey::length, '\0');
    if (::read(file, key.data(), std::size_t(key.size())) != key.size()) {
        return failed(SiteKey::Problem::CannotRead, errno);
    }
    return {key, SiteKey::Problem::None, {}};
}

/// Whole under a passing name first; a link then fails where another program was faster. @return errno
int make(const QByteArray &path)
{
    const QByteArray passing = path + '.' + QByteArray::number(::getpid());
    ::unlink(passing.constData()); // of a program that was killed
    const FileDescriptor file(
        ::open(passing.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, ownerOnly));
    if (file < 0) {
        return errno;
    }
    int error = writeAll(file, randomKey().constData(), SiteKey::length);
    if (error == 0 && (::fsync(file) != 0 || ::link(passing.constData(), path.constData()) != 0)) {
        error = errno;
    }
    ::unlink(passing.constData());
    return error == EEXIST ? 0 : error;
}

} // namespace

QString SiteKey::usualPath()
{
    const QSettings settings(
        ConfigLocation::unchecked(QLatin1String(ConfigKey::mainIni)), QSettings::IniFormat);
    const QString named = settings.value(QLatin1String(ConfigKey::anonymiseKey)).toString();
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    return named.isEmpty() ? QDir(folder).filePath(QLatin1String(fileName))
                           : QFileInfo(named).absoluteFilePath();
}

SiteKey::Result SiteKey::load(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::lstat(name.constData(), &status) == 0) {
        return read(name);
    }
    QDir().mkpath(QFileInfo(path).absolutePath());
    const int error = make(name);
    return error == 0 ? read(name) : failed(Problem::CannotMake, error);
}
