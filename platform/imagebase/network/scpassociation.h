#pragma once

#include "receivejournal.h"
#include "scpconnection.h"
#include "storescp.h"

#include <memory>

struct T_ASC_Parameters;
struct T_DIMSE_Message;

/// One association that a peer requested: negotiated, served and ended on the thread that calls run().
class ScpAssociation
{
public:
    /// All outlive it.
    ScpAssociation(OwnedSocket socket, const ScpSettings &settings, const StoreProvider &provider,
        const AbortSwitch &abort);
    ~ScpAssociation();
    ScpAssociation(const ScpAssociation &) = delete;
    ScpAssociation &operator=(const ScpAssociation &) = delete;

    /// Until the peer leaves, breaks a rule or is silent for too long, or the switch is triggered.
    void run();

private:
    bool isWelcome();
    bool reject(int reason, ReceiveProblem problem, const QString &detail);
    void acceptContexts();
    bool acknowledge();
    void serve();
    bool serveOne();
    bool answer(T_DIMSE_Message &message, int context);

    const ScpSettings &m_settings;
    const StoreProvider &m_provider;
    ScpTransport m_transport;
    T_ASC_Association *m_association = nullptr;
    QString m_peer; ///< its AE title
};
