#pragma once

#include "networkfailure.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>
#include <QVector>

#include <atomic>

class DcmDataset;
class ScuAssociation;
struct T_DIMSE_Message;

/**
 * One request over an open association and the messages that come back until it is answered. Sends C-CANCEL
 * when that is wanted, and gives up where the peer does not end soon after it.
 */
class DimseDialogue
{
public:
    /// @param association open @param cancelled set by any thread that wants the request to end; both outlive
    /// the dialogue
    DimseDialogue(ScuAssociation &association, const std::atomic<bool> &cancelled)
        : m_association(association)
        , m_cancelled(cancelled)
    { }

    /// Chooses the first of the services that the peer accepts, and sends: its UID and the number of the
    /// message are filled in. Without any of them: NoContext.
    NetworkFailure begin(
        const QVector<QByteArray> &services, T_DIMSE_Message &request, DcmDataset &identifier);
    /// The service that begin() chose, its context and whether its data come without VRs.
    const QByteArray &service() const { return m_service; }
    int context() const { return m_context; }
    bool isImplicit() const { return m_isImplicit; }

    /// Waits for the next message. @param comment what the peer says about its status
    NetworkFailure next(T_DIMSE_Message &message, int &context, QString &comment);
    /// Takes the data set behind a message; more than the limit ends the association.
    NetworkFailure readData(qint64 limit, QByteArray &bytes);

    /// Asks the peer to end; next() then goes on until it does, for a few seconds.
    void cancel() { m_cancelWanted = true; }

private:
    NetworkFailure wait();
    NetworkFailure sendCancel();

    ScuAssociation &m_association;
    const std::atomic<bool> &m_cancelled;
    bool m_cancelWanted = false;
    QElapsedTimer m_sinceCancel; ///< valid once C-CANCEL was sent
    QByteArray m_service;
    int m_context = 0;
    quint16 m_messageId = 0;
    bool m_isImplicit = false;
};
