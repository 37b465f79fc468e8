#include "batchfiles.h"

#include "readfile.h"

#include <QFile>

BatchFiles::BatchFiles(FileStore &store, const std::atomic<bool> &cancelled)
    : m_store(store)
    , m_cancelled(cancelled)
{ }

int BatchFiles::bringIn(ReadFile &file, const QString &path)
{
    const int error = file.taken ? m_store.take(file.file.path, path, m_cancelled)
                                 : m_store.place(file.temporaryPath, path);
    if (error != 0) {
        return error;
    }
    if (file.taken) {
        m_taken.append(file.file.path);
    } else {
        file.temporaryPath.clear();
    }
    m_placed.append(path);
    return 0;
}

void BatchFiles::drop(ReadFile &file)
{
    FileStore::discard(file.temporaryPath);
    if (file.taken) {
        m_taken.append(file.file.path);
    }
}

void BatchFiles::syncNames() const
{
    m_store.syncNames(m_placed);
}

void BatchFiles::keep()
{
    m_placed.clear();
    for (const QByteArray &path : qAsConst(m_taken)) {
        FileStore::discard(path);
    }
    m_taken.clear();
}

void BatchFiles::undo()
{
    for (const QString &path : qAsConst(m_placed)) {
        QFile::remove(path);
    }
    m_placed.clear();
    m_taken.clear();
}
