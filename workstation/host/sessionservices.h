#pragma once

#include "receiveservice.h"
#include "retrievalservice.h"
#include "runningprograms.h"
#include "sendservice.h"

#include <QObject>

#include <memory>

/**
 * What goes on when a window is built in the place of another: where a session owns it, the window of another
 * language or index works with the same services. GUI thread.
 */
class SessionServices : public QObject
{
    Q_OBJECT

public:
    explicit SessionServices(QObject *parent = nullptr);
    ~SessionServices() override;

    /// The programs that launchers have started.
    RunningPrograms *programs() const { return m_programs; }
    /// What comes from the network.
    ReceiveService *receiving() const { return m_receiving; }
    /// What is fetched from archives.
    RetrievalService *retrievals() const { return m_retrievals; }

    /// What is sent; null where no index is open.
    SendService *sending() const { return m_sending.get(); }

    /// The services work on this index from now on; where they do already, nothing happens.
    void openIndex(const QString &databasePath);
    /// Before another index is opened.
    void closeIndex();

private:
    RunningPrograms *const m_programs;
    ReceiveService *const m_receiving;
    RetrievalService *const m_retrievals;
    std::unique_ptr<SendService> m_sending;
    QString m_index; ///< whose jobs are being sent
};
