#pragma once

#include "objectspool.h"
#include "receivejournal.h"
#include "spoolindexer.h"
#include "storeprovider.h"
#include "storescp.h"
#include "temporaryindex.h"

#include <QStringList>

#include <memory>

/// A receiver on a free port of the loopback over a fresh index.
class Receiver
{
public:
    explicit Receiver(const QStringList &callers = {});

    QString port() const { return QString::number(scp->port()); }
    /// Objects with a record.
    int records() const;
    /// The files that the store and the spool have, the journal and the lock left out.
    QStringList stored() const;
    QStringList spooled() const;
    ReceiveCounts counts() const { return journal.counts(); }
    /// Whether everything acknowledged has its verdict.
    bool isIdle() const;

    static constexpr char aeTitle[] = "RECEIVER";

    TemporaryIndex index;
    ReceiveJournal journal;
    ObjectSpool spool;
    std::unique_ptr<SpoolIndexer> indexer;
    std::unique_ptr<StoreProvider> provider;
    std::unique_ptr<StoreScp> scp;
};
