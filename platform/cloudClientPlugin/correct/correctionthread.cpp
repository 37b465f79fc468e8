#include "correctionthread.h"

#include "objectcorrection.h"

#include <QThread>

#include <utility>

CorrectionThread::CorrectionThread(QObject *parent)
    : QObject(parent)
{ }

CorrectionThread::~CorrectionThread()
{
    stop();
    if (m_thread) {
        m_thread->wait();
    }
}

void CorrectionThread::begin(Work work)
{
    stop();
    m_stop = std::make_shared<std::atomic<bool>>(false);
    m_next = std::move(work);
    if (!m_thread) {
        start();
    }
}

void CorrectionThread::stop()
{
    if (m_stop) {
        *m_stop = true;
    }
}

void CorrectionThread::start()
{
    m_thread.reset(QThread::create([work = std::exchange(m_next, {}), stop = m_stop] { work(*stop); }));
    m_thread->setStackSize(correctionStack);
    connect(m_thread.get(), &QThread::finished, this, &CorrectionThread::onEnded);
    m_thread->start();
}

void CorrectionThread::onEnded()
{
    m_thread->wait(); // for its last few instructions
    m_thread.reset();
    if (m_next) {
        start();
    }
}
