#include "folderfiles.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMetaObject>

#include <utility>

namespace {

constexpr int tellMs = 250;

} // namespace

FolderFiles::FolderFiles(QObject *parent)
    : QObject(parent)
{ }

FolderFiles::~FolderFiles()
{
    cancel();
}

void FolderFiles::list(const QString &path)
{
    m_thread = QThread::create([this, path, run = ++m_run] { walk(path, run); });
    m_thread->start();
}

void FolderFiles::cancel()
{
    ++m_run;
    if (QThread *thread = std::exchange(m_thread, nullptr)) {
        thread->requestInterruption();
        thread->wait();
        delete thread;
    }
}

void FolderFiles::walk(const QString &path, int run)
{
    const auto tell = [this, run](const auto &deed) {
        const auto ifStillWanted = [this, run, deed] {
            if (run == m_run) {
                deed();
            }
        };
        QMetaObject::invokeMethod(this, ifStillWanted, Qt::QueuedConnection);
    };
    QStringList files;
    QElapsedTimer sinceTold;
    sinceTold.start();
    if (QFileInfo(path).isFile()) {
        files.append(path);
    }
    QDirIterator entries(
        path, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext() && !QThread::currentThread()->isInterruptionRequested()) {
        files.append(entries.next());
        if (sinceTold.elapsed() >= tellMs) {
            sinceTold.restart();
            tell([this, count = files.size()] { emit found(count); });
        }
    }
    tell([this, path, files] {
        cancel();
        emit listed(path, files);
    });
}
