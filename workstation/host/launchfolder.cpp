#include "launchfolder.h"

#include <QDir>

#include <algorithm>

#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr char folderPrefix[] = "patientmanager-launch-";
constexpr char errorName[] = "errors.txt";
constexpr char listName[] = "files.txt";
/// As much as a message box shows of what a program has said.
constexpr qint64 lastBytes = 2000;
constexpr int lastLines = 8;
constexpr qint64 mostErrorBytes = 1 << 20;

void trimFile(const QString &path)
{
    if (QFileInfo(path).size() > mostErrorBytes) {
        QFile::resize(path, 0); // the program appends
    }
}

/// False while anybody holds the folder, or it has just been made.
bool isLeft(const QString &folder)
{
    QFile errors(folder + QLatin1Char('/') + QLatin1String(errorName));
    return errors.open(QIODevice::ReadOnly) && flock(errors.handle(), LOCK_EX | LOCK_NB) == 0;
}

} // namespace

LaunchFolder::LaunchFolder()
    : m_folder(QDir::temp().filePath(QLatin1String(folderPrefix) + QStringLiteral("XXXXXX")))
    , m_errors(m_folder.filePath(QLatin1String(errorName)))
{
    if (m_folder.isValid() && m_errors.open(QIODevice::ReadWrite)) {
        flock(m_errors.handle(), LOCK_SH | LOCK_NB);
    }
}

QString LaunchFolder::writeFileList(const QStringList &files) const
{
    QFile list(m_folder.filePath(QLatin1String(listName)));
    QByteArray lines;
    for (const QString &file : files) {
        lines += file.toUtf8() + '\n';
    }
    const bool written =
        m_folder.isValid() && list.open(QIODevice::WriteOnly) && list.write(lines) == lines.size();
    return written && list.flush() ? list.fileName() : QString();
}

QString LaunchFolder::complaints() const
{
    QFile file(errorFile());
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    file.seek(std::max<qint64>(0, file.size() - lastBytes));
    const QStringList lines = QString::fromLocal8Bit(file.readAll()).trimmed().split(QLatin1Char('\n'));
    return QStringList(lines.mid(std::max(0, lines.size() - lastLines))).join(QLatin1Char('\n'));
}

void LaunchFolder::trim() const
{
    trimFile(errorFile());
}

void LaunchFolder::holdByStandardError()
{
    flock(STDERR_FILENO, LOCK_SH | LOCK_NB);
}

void LaunchFolder::sweep()
{
    const QFileInfoList folders = QDir::temp().entryInfoList(
        {QLatin1String(folderPrefix) + QLatin1Char('*')}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo &folder : folders) {
        if (folder.ownerId() != geteuid()) {
            continue;
        }
        if (isLeft(folder.filePath())) {
            QDir(folder.filePath()).removeRecursively();
        } else {
            trimFile(folder.filePath() + QLatin1Char('/') + QLatin1String(errorName));
        }
    }
}
