#include "listopener.h"

namespace {

constexpr int mostWorkers = 8;

} // namespace

ListOpener::ListOpener(QObject *parent)
    : QObject(parent)
    , m_stop(std::make_shared<std::atomic<bool>>(false))
{
    m_workers.setMaxThreadCount(mostWorkers);
}

ListOpener::~ListOpener()
{
    *m_stop = true;
    m_workers.clear();
    m_workers.waitForDone();
}

void ListOpener::open(const Reader &read)
{
    *m_stop = true;
    m_stop = std::make_shared<std::atomic<bool>>(false);
    m_workers.start([this, read, stop = m_stop] {
        const ImageList list = read(*stop);
        QMetaObject::invokeMethod(
            this,
            [this, list, stop] {
                if (!*stop) {
                    emit listed(list);
                }
            },
            Qt::QueuedConnection);
    });
}
