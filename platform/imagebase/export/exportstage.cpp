#include "exportstage.h"

#include "filedescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

constexpr char stageTemplate[] = "/.export-XXXXXX";
constexpr char stagePattern[] = ".export-??????";
/// In a stage: the names that it lets out together.
constexpr char outNote[] = "/.out";

std::unique_ptr<QLockFile> lockOf(const QString &stage)
{
    auto lock = std::make_unique<QLockFile>(stage + QStringLiteral("/.lock"));
    lock->setStaleLockTime(0); // by its process, not by its age: exports can be long
    return lock;
}

/// mkpath() does not say what went wrong.
int makePath(const QString &folder)
{
    errno = 0;
    if (QDir().mkpath(folder)) {
        return 0;
    }
    return errno != 0 ? errno : EACCES;
}

} // namespace

ExportStage::ExportStage(QString folder)
    : m_folder(std::move(folder))
{
    sweep(m_folder);
    QByteArray name = QFile::encodeName(m_folder) + stageTemplate;
    if (!mkdtemp(name.data())) {
        m_error = errno;
        return;
    }
    m_stage = QFile::decodeName(name);
    m_lock = lockOf(m_stage);
    if (!m_lock->tryLock(0)) {
        m_error = m_lock->error() == QLockFile::PermissionError ? EACCES : ENOSPC;
    }
}

ExportStage::~ExportStage()
{
    m_lock.reset();
    if (!m_stage.isEmpty()) {
        QDir(m_stage).removeRecursively();
    }
}

void ExportStage::sweep(const QString &folder)
{
    const QDir dir(folder);
    const QStringList old = dir.entryList(
        {QLatin1String(stagePattern)}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QString &name : old) {
        // Without a lock it is no stage of ours, whatever it is called.
        const QString stage = dir.filePath(name);
        if (QFile::exists(stage + QStringLiteral("/.lock")) && lockOf(stage)->tryLock(0)) {
            takeBackPart(folder, stage);
            QDir(stage).removeRecursively();
        }
    }
}

/// Takes back what a stage had begun to let out, where it did not come to the end of it.
void ExportStage::takeBackPart(const QString &folder, const QString &stage)
{
    QFile note(stage + QLatin1String(outNote));
    if (!note.open(QIODevice::ReadOnly)) {
        return;
    }
    const QStringList names = QString::fromUtf8(note.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const bool isWhole = std::none_of(names.begin(), names.end(),
        [&stage](const QString &name) { return QFileInfo::exists(stage + QLatin1Char('/') + name); });
    if (!isWhole) {
        takeBack(names, folder, stage);
    }
}

void ExportStage::takeBack(const QStringList &names, const QString &folder, const QString &stage)
{
    for (const QString &name : names) {
        const QString inside = stage + QLatin1Char('/') + name;
        if (!QFileInfo::exists(inside)) {
            std::rename(QFile::encodeName(folder + QLatin1Char('/') + name).constData(),
                QFile::encodeName(inside).constData());
        }
    }
}

QString ExportStage::path(const QString &name) const
{
    return m_stage + QLatin1Char('/') + name;
}

int ExportStage::makeFolderOf(const QString &name) const
{
    const QString folder = QFileInfo(path(name)).path();
    if (folder == m_lastFolder) {
        return 0;
    }
    const int error = makePath(folder);
    m_lastFolder = error == 0 ? folder : QString();
    return error;
}

int ExportStage::moveOut(const QString &name, bool replace) const
{
    const QString target = m_folder + QLatin1Char('/') + name;
    const QString folder = QFileInfo(target).path();
    if (folder != m_lastFolder) {
        const int error = makePath(folder);
        if (error != 0) {
            return error;
        }
        m_lastFolder = folder;
    }
    const QByteArray to = QFile::encodeName(target);
    struct stat status = {};
    if (!replace && lstat(to.constData(), &status) == 0) {
        return EEXIST;
    }
    return std::rename(QFile::encodeName(path(name)).constData(), to.constData()) == 0 ? 0 : errno;
}

int ExportStage::moveAllOut(const QStringList &names, bool replace) const
{
    if (names.size() > 1) {
        QFile note(m_stage + QLatin1String(outNote));
        const QByteArray text = names.join(QLatin1Char('\n')).toUtf8();
        if (!note.open(QIODevice::WriteOnly) || note.write(text) != text.size() || !note.flush()) {
            return EIO;
        }
    }
    for (int i = 0; i < names.size(); ++i) {
        const int error = moveOut(names.at(i), replace);
        if (error != 0) {
            takeBack(names.mid(0, i), m_folder, m_stage);
            return error;
        }
    }
    return 0;
}

int ExportStage::sync() const
{
    const FileDescriptor folder(
        open(QFile::encodeName(m_folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder >= 0 && syncfs(folder) == 0 ? 0 : errno;
}
