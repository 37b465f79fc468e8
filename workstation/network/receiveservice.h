#pragma once

#include "receivejournal.h"
#include "receivesettings.h"
#include "storescp.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

class ObjectSpool;
class SpoolIndexer;

/// How receiving stands, at one moment.
struct ReceiveStatus
{
    bool listening = false;
    int port = 0;
    QString aeTitle; ///< what we are called by, where something listens
    QString spoolProblem; ///< why nothing can be taken at all (the system's word); empty where all is well
    ListenFailure failure; ///< why the port is not listened on although it should be
    ReceiveCounts counts;
    int waiting = 0; ///< objects that have no record yet
    bool stuck = false; ///< the index takes none at the moment

    bool isBusy() const { return counts.associations > 0 || waiting > 0; }
    /// Whether both say the same of what comes in.
    bool isAsFarAs(const ReceiveStatus &other) const;
};

/**
 * Takes objects from the network into the index that is open: the spool beside it, the indexer that empties
 * it and, where the settings say so, the port.
 *
 * Indexes what an earlier run has left as soon as an index is opened, whether or not the port is on. Settings
 * take effect when applySettings() is called. GUI thread.
 */
class ReceiveService : public QObject
{
    Q_OBJECT

public:
    explicit ReceiveService(QObject *parent = nullptr);
    ~ReceiveService() override;

    /// Works on this index from now on; nothing happens where it does already.
    void openIndex(const QString &databasePath);
    /// Ends associations; objects that wait stay in the spool of their index.
    void closeIndex();

    ReceiveStatus status() const;
    /// For objects that come over an association of our own (C-GET): any thread may use it until
    /// closeIndex(). Null without an index.
    StoreProvider *provider() const;
    /// The text file with every problem; empty without an index.
    QString journalFile() const;

public slots:
    /// Reads the settings and makes the port follow them; associations go on where the port's stay the same.
    /// Whether objects are synced is settled when an index is opened.
    void applySettings();

signals:
    /// status() may be another one; a few times a second while something comes in.
    void changed();
    /// The port cannot be listened on. It is tried again every few seconds; told again only when the settings
    /// have changed.
    void portFailed(int port, const ListenFailure &failure);

private:
    struct Work;

    void listen(const ScpSettings &settings);
    void look();
    void tell();

    QString m_databasePath;
    std::unique_ptr<Work> m_work; ///< of the open index; null without one
    ListenFailure m_failure;
    std::optional<ScpSettings> m_tried; ///< what the failure is of, and was told of
    QElapsedTimer m_sinceTry;
    QTimer m_timer;
    ReceiveStatus m_told; ///< when changed() was emitted last
};
