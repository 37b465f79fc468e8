#pragma once

#include "scuassociation.h"
#include "storefile.h"

/**
 * Stores files at the peer of an association (C-STORE).
 *
 * A data set goes as its file has it, byte by byte and never as a whole in memory, wherever the peer accepts
 * its transfer syntax. Otherwise it is written anew, decompressed where our decoders can. While the peer
 * works on an answer, the next file is read ahead. Blocks the thread of the association.
 */
class IMAGEBASE_EXPORT StoreScu
{
public:
    /// As many kinds as always fit into one association.
    static constexpr int mostKinds = ScuAssociation::mostContexts / 2;

    /// @param association must outlive the object; open() it with contextsFor()
    explicit StoreScu(ScuAssociation &association);
    ~StoreScu();
    StoreScu(const StoreScu &) = delete;
    StoreScu &operator=(const StoreScu &) = delete;

    /// What to offer for kinds of objects: each as it is stored, and each class uncompressed where we could
    /// make that. Kinds that no longer fit are left out.
    static QVector<ScuContext> contextsFor(const QVector<StoreKind> &kinds);

    /// Sends one file and waits for the answer. After a Network problem the association is closed, as it is
    /// where a file turned out shorter in the middle. @param next what will be sent after it, or empty
    StoreOutcome send(const QByteArray &path, const QByteArray &next = {});

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
