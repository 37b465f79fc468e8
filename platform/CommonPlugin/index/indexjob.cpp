#include "indexjob.h"

IndexJob::IndexJob(Work work, QObject *parent)
    : QObject(parent)
    , m_work(std::move(work))
{ }

IndexJob::~IndexJob()
{
    m_stop = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void IndexJob::start()
{
    m_thread = std::thread([this] {
        const QVariant result = m_work(m_stop, [this](double share) { emit progressed(share); });
        emit finished(result); // queued to receivers on the GUI thread
    });
}
