#include "receiver.h"
#include "testfiles.h"

#include <QVariant>

Receiver::Receiver(const QStringList &callers)
    : journal(index.folder() + QStringLiteral("/problems.txt"))
    , spool(index.path())
{
    if (spool.open() != 0) {
        qFatal("no spool");
    }
    indexer = std::make_unique<SpoolIndexer>(index.path(), spool, journal);
    provider = std::make_unique<StoreProvider>(spool, *indexer, journal);
    ScpSettings settings;
    settings.aeTitle = QLatin1String(aeTitle);
    settings.bindAddress = QStringLiteral("127.0.0.1");
    settings.callers = callers;
    scp = std::make_unique<StoreScp>(settings, *provider);
    const ListenFailure failure = scp->start();
    if (failure.reason != ListenFailure::Reason::None) {
        qFatal("cannot listen: %s", qPrintable(failure.detail));
    }
}

int Receiver::records() const
{
    return index.count("imageformat");
}

QStringList Receiver::stored() const
{
    return filesBelow(index.folder() + QStringLiteral("/store"), {QStringLiteral("*.dcm")});
}

QStringList Receiver::spooled() const
{
    return filesBelow(ObjectSpool::folderOf(index.path()), {QStringLiteral("*.dcm")});
}

bool Receiver::isIdle() const
{
    const ReceiveCounts now = counts();
    return now.associations == 0 && indexer->waiting() == 0 && now.indexed == now.received;
}
