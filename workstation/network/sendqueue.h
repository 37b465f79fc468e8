#pragma once

#include "sendstore.h"
#include "storefile.h"

/// A node with objects that wait for it.
struct WaitingNode
{
    DicomNode node;
    int waiting = 0; ///< at most as many as were asked for
};

/// What workers do with the objects of the jobs; for the thread of its store.
class SendQueue
{
public:
    explicit SendQueue(SendStore &store)
        : m_store(store)
    { }

    SendStore &store() const { return m_store; }

    /// Nodes with objects whose time has come. @param most counts no further
    QVector<WaitingNode> nodes(const QDateTime &now, int most);
    /// Takes the next objects for a node, so that no other worker does.
    QVector<SendObject> take(const DicomNode &node, const QDateTime &now, int most);
    /// Kinds among what waits for a node.
    QVector<StoreKind> kinds(const DicomNode &node, int most);
    /// Gives back what was taken and not sent.
    bool release(const QVector<SendObject> &objects);
    /// Writes down what became of an object that was taken. @param notBefore where it waits again
    bool record(const SendObject &object, const QDateTime &notBefore = {});
    /// Nothing that waits for a node can be sent.
    bool failAll(const DicomNode &node, const NetworkFailure &failure);

private:
    QVector<SendObject> waiting(const DicomNode &node, const QDateTime &now, int most);

    SendStore &m_store;
};
