#include "patientfinder.h"

#include "indexconnection.h"

#include <algorithm>
#include <utility>

namespace {

/// One thread reads while the other answers.
constexpr int threads = 2;
/// At most a tenth of the time goes into reading while others write.
constexpr qint64 pauseFactor = 9;
/// What cannot be read now is tried again, at least that much later.
constexpr qint64 retryMs = 1000;

} // namespace

PatientFinder::PatientFinder(QString databasePath, QObject *parent)
    : QObject(parent)
    , m_databasePath(std::move(databasePath))
{
    m_threads.setMaxThreadCount(threads);
    m_readTimer.setSingleShot(true);
    connect(&m_readTimer, &QTimer::timeout, this, &PatientFinder::read);
}

PatientFinder::~PatientFinder()
{
    m_stop = true;
    m_threads.waitForDone();
}

void PatientFinder::prepare()
{
    if (m_isStale) {
        readSoon();
    }
}

void PatientFinder::ask(const PatientQuestion &question)
{
    m_question = question;
    m_wasAnswered = false;
    prepare();
    answer();
}

void PatientFinder::forget()
{
    m_question.reset();
    m_readTimer.stop();
}

void PatientFinder::onIndexChanged()
{
    m_isStale = true;
    if (m_question) {
        readSoon();
    }
}

void PatientFinder::readSoon()
{
    if (!m_isReading && !m_readTimer.isActive()) {
        const qint64 since = m_sinceRead.isValid() ? m_sinceRead.elapsed() : m_readPauseMs;
        m_readTimer.start(int(std::max<qint64>(0, m_readPauseMs - since)));
    }
}

void PatientFinder::read()
{
    m_isReading = true;
    m_isStale = false; // what is written from now on is not sure to be read
    m_threads.start([this, previous = m_search] {
        QElapsedTimer cost;
        cost.start();
        std::shared_ptr<const PatientSearch> search;
        const IndexConnection index(m_databasePath);
        if (index.isOpen()) {
            search = PatientSearch::read(index.database(), previous.get(), m_stop);
        }
        const qint64 milliseconds = cost.elapsed();
        QMetaObject::invokeMethod(
            this, [this, search, milliseconds] { onRead(search, milliseconds); }, Qt::QueuedConnection);
    });
}

void PatientFinder::onRead(const std::shared_ptr<const PatientSearch> &search, qint64 milliseconds)
{
    m_isReading = false;
    m_readPauseMs = milliseconds * pauseFactor;
    m_sinceRead.start();
    if (search) {
        m_search = search;
        answer();
        emit prepared();
    } else {
        m_isStale = true;
        m_readPauseMs = std::max(m_readPauseMs, retryMs);
        emit unreadable();
    }
    if (m_isStale && m_question) {
        readSoon();
    }
}

void PatientFinder::answer()
{
    if (!m_question || !m_search) {
        return;
    }
    m_answerDue = m_isAnswering;
    if (m_isAnswering) {
        return;
    }
    m_isAnswering = true;
    m_threads.start([this, search = m_search, question = *m_question] {
        const std::vector<qint64> keys = search->find(question);
        QMetaObject::invokeMethod(
            this, [this, keys] { onAnswer(keys); }, Qt::QueuedConnection);
    });
}

/// An answer to a question that has been replaced meanwhile is dropped.
void PatientFinder::onAnswer(const std::vector<qint64> &keys)
{
    m_isAnswering = false;
    if (m_answerDue) {
        answer();
    } else if (m_question) {
        emit answered(keys, !std::exchange(m_wasAnswered, true));
    }
}
