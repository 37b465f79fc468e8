#pragma once

#include "imagefile.h"

#include <QMutex>
#include <QString>

#include <memory>
#include <vector>

/**
 * Image files, a few and within a bound of memory, that stay open for their next frame, since a multi-frame
 * file's description can be long. A file is lent to one thread at a time. May be used by several threads.
 */
class OpenFiles
{
public:
    struct Entry
    {
        QString path;
        ImageFile file;
        PixelProblem problem = PixelProblem::CannotOpen;
    };

    /// An open file of this path, opened now where none is idle.
    std::unique_ptr<Entry> take(const QString &path);
    /// Keeps it for the next one who asks, where it has several frames.
    void giveBack(std::unique_ptr<Entry> entry);
    void clear();

private:
    QMutex m_mutex;
    std::vector<std::unique_ptr<Entry>> m_idle;
};
