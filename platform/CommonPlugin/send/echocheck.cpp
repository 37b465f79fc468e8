#include "echocheck.h"

#include "echoscu.h"
#include "receivesettings.h"

#include <QElapsedTimer>

namespace {

/// Somebody looks on: shorter than a transfer would wait.
ScuOptions patience()
{
    ScuOptions options;
    options.ownAeTitle = ReceiveSettings::ownAeTitle();
    options.connectMs = 5'000;
    options.associationMs = 10'000;
    options.requestMs = 10'000;
    return options;
}

} // namespace

EchoCheck::EchoCheck(const DicomNode &node, QObject *parent)
    : QObject(parent)
    , m_echo(std::make_unique<EchoScu>(node, patience()))
{ }

EchoCheck::~EchoCheck()
{
    m_echo->abort();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void EchoCheck::start()
{
    m_thread = std::thread([this] {
        QElapsedTimer time;
        time.start();
        const NetworkFailure failure = m_echo->run();
        const qint64 milliseconds = time.elapsed();
        QMetaObject::invokeMethod(
            this, [this, failure, milliseconds] { emit answered(failure, milliseconds); },
            Qt::QueuedConnection);
    });
}
