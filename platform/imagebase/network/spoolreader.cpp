#include "spoolreader.h"

#include "spoolfile.h"
#include "spoolnotes.h"

#include <QElapsedTimer>

#include <sys/stat.h>

namespace {

constexpr qint64 readingMs = 300;

} // namespace

bool stampSpooled(WalkedFile &file)
{
    struct stat status = {};
    if (lstat(file.path.constData(), &status) != 0) {
        return false;
    }
    file.stamp = stampOf(status);
    return true;
}

SpoolItems SpoolReader::read(SpoolItems items)
{
    QElapsedTimer time;
    time.start();
    SpoolItems good;
    while (!items.empty() && !time.hasExpired(readingMs) && !m_queue.isStopped()) {
        SpoolItem item = std::move(items.front());
        items.pop_front();
        if (!isWhole(item)) {
            m_queue.finish(1);
            continue;
        }
        if (!item.result) {
            item.result = std::make_unique<DicomReadResult>(m_reader.read(item.path));
        }
        good.push_back(std::move(item));
    }
    m_queue.putBack(std::move(items));
    return good;
}

bool SpoolReader::isWhole(const SpoolItem &item) const
{
    WalkedFile file;
    file.path = item.path;
    if (!stampSpooled(file)) {
        return false; // an earlier program had no time to take it off its list
    }
    if (item.result || SpoolFile::isWhole(item.path)) {
        return true;
    }
    // It was never acknowledged: nobody relies on it, but it may be of use.
    m_notes.keepAside(item.path, ReceiveProblem::NotReadable, QString());
    return false;
}
