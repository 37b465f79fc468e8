#include "storescp.h"

#include "dcmtklog.h"
#include "listeningsocket.h"
#include "receivejournal.h"
#include "scpassociation.h"

#include <QThread>

#include <algorithm>
#include <cerrno>
#include <thread>
#include <vector>

#include <poll.h>

#include <dcmtk/dcmnet/dul.h>

namespace {

constexpr qint64 msPerSecond = 1000;
constexpr int lookMs = 200; ///< between looks at the switch
constexpr int lookSoonMs = 20; ///< while somebody waits for a thread
constexpr int mostWaiting = 256;
constexpr int patienceSeconds = 3; ///< how long a peer waits for a thread before it is told
/// DCMTK reads what is nested by recursion; what a command may hold is bounded, and this is enough for it.
constexpr uint stackBytes = 64U << 20U;

/// A connection without a thread.
struct Waiting
{
    OwnedSocket socket;
    QDeadlineTimer deadline;
    bool spoke = false;
};

} // namespace

struct StoreScp::Private
{
    Private(ScpSettings itsSettings, StoreProvider &itsProvider)
        : settings(std::move(itsSettings))
        , provider(itsProvider)
    { }

    void listen();
    void accept();
    void look();
    void admit();
    bool makeRoom();
    void begin(OwnedSocket socket);
    void turnAway(const OwnedSocket &peer);
    void reap();
    bool isFull() const { return int(threads.size()) >= settings.mostAssociations; }

    const ScpSettings settings;
    StoreProvider &provider;
    std::unique_ptr<AbortSwitch> stop;
    OwnedSocket listener;
    int port = 0;
    std::vector<Waiting> waiting;
    std::vector<std::unique_ptr<QThread>> threads;
    std::thread thread;
};

StoreScp::StoreScp(ScpSettings settings, StoreProvider &provider)
    : d(std::make_unique<Private>(std::move(settings), provider))
{ }

StoreScp::~StoreScp()
{
    stop();
}

const ScpSettings &StoreScp::settings() const
{
    return d->settings;
}

int StoreScp::port() const
{
    return d->port;
}

ListenFailure StoreScp::start()
{
    stop();
    silenceDcmtk();
    dcmDisableGethostbyaddr.set(OFTrue); // a name server that hangs would hold up every caller
    ListenFailure failure;
    d->listener = listenOn(d->settings.bindAddress, d->settings.port, failure);
    if (failure.reason == ListenFailure::Reason::None) {
        d->port = portOf(d->listener.get());
        d->stop = std::make_unique<AbortSwitch>();
        d->thread = std::thread([this] { d->listen(); });
    }
    return failure;
}

void StoreScp::stop()
{
    if (!d->thread.joinable()) {
        return;
    }
    d->stop->trigger();
    d->thread.join();
    d->listener = OwnedSocket();
    d->port = 0;
}

void StoreScp::Private::listen()
{
    while (!stop->isTriggered()) {
        look();
        admit();
        reap();
    }
    waiting.clear();
    for (const std::unique_ptr<QThread> &association : threads) {
        association->wait();
    }
    threads.clear();
}

/// Waits until somebody connects or speaks.
void StoreScp::Private::look()
{
    std::vector<pollfd> polled{{listener.get(), POLLIN, 0}};
    bool anyHeld = false;
    for (const Waiting &peer : waiting) {
        anyHeld = anyHeld || peer.spoke;
        polled.push_back({peer.spoke ? -1 : peer.socket.get(), POLLIN, 0});
    }
    if (poll(polled.data(), polled.size(), anyHeld ? lookSoonMs : lookMs) <= 0) {
        return;
    }
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        if (polled[i + 1].revents != 0 && !waiting[i].spoke) {
            waiting[i].spoke = true;
            waiting[i].deadline.setRemainingTime(patienceSeconds * msPerSecond);
        }
    }
    if (polled.front().revents != 0) {
        accept();
    }
}

void StoreScp::Private::accept()
{
    for (OwnedSocket socket = acceptFrom(listener.get()); socket.get() >= 0;
         socket = acceptFrom(listener.get())) {
        if (!makeRoom()) {
            turnAway(socket);
            continue;
        }
        waiting.push_back(
            {std::move(socket), QDeadlineTimer(settings.firstWordSeconds * msPerSecond), false});
    }
    if (errno == EMFILE || errno == ENFILE) {
        QThread::msleep(lookSoonMs); // somebody connects, and the process has no number left for him
    }
}

/// For one more that waits, at the cost of the one that has been silent longest. @return false where all of
/// them have spoken
bool StoreScp::Private::makeRoom()
{
    if (waiting.size() < mostWaiting) {
        return true;
    }
    const auto mute =
        std::find_if(waiting.begin(), waiting.end(), [](const Waiting &peer) { return !peer.spoke; });
    const bool found = mute != waiting.end();
    if (found) {
        waiting.erase(mute);
    }
    return found;
}

/// Gives threads to those who spoke, and closes the lines of those who waited in vain.
void StoreScp::Private::admit()
{
    std::vector<Waiting> still;
    for (Waiting &peer : waiting) {
        if (peer.spoke && !isFull()) {
            begin(std::move(peer.socket));
        } else if (!peer.deadline.hasExpired()) {
            still.push_back(std::move(peer));
        } else if (peer.spoke) {
            turnAway(peer.socket);
        }
    }
    waiting = std::move(still);
}

void StoreScp::Private::begin(OwnedSocket socket)
{
    const auto shared = std::make_shared<OwnedSocket>(std::move(socket));
    std::unique_ptr<QThread> association(QThread::create(
        [this, shared] { ScpAssociation(std::move(*shared), settings, provider, *stop).run(); }));
    association->setStackSize(stackBytes);
    association->setObjectName(QStringLiteral("association"));
    association->start();
    if (association->isRunning() || association->isFinished()) {
        threads.push_back(std::move(association));
    } else {
        turnAway(*shared); // the system has no thread left
    }
}

void StoreScp::Private::turnAway(const OwnedSocket &peer)
{
    refuseBusy(peer.get());
    ReceiveEvent event;
    event.problem = ReceiveProblem::Busy;
    provider.journal().note(event, true);
}

void StoreScp::Private::reap()
{
    const auto ended = std::remove_if(threads.begin(), threads.end(),
        [](const std::unique_ptr<QThread> &association) { return association->isFinished(); });
    threads.erase(ended, threads.end());
}
