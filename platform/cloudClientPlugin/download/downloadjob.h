#pragma once

#include "downloadtally.h"
#include "fetchrate.h"

#include <QHash>
#include <QSet>

/// A series of a download, and how far it is.
struct SeriesJob
{
    enum class State : quint8 {
        Waiting,
        Fetching,
        Landing, ///< all of it is here, and not all in the index yet
        Done,
        Failed
    };

    QString uid;
    State state = State::Waiting;
    int expected = -1;
    qint64 indexed = 0;
    qint64 refused = 0;
    qint64 pending = 0; ///< objects that are here and not in the index yet
    int attempts = 0; ///< failures that may pass, since something came last
    qint64 dueMs = 0; ///< when it may be tried again
    bool isRecounted = false; ///< the service was asked for a list, after an answer that was short or at once
    QSet<QString> listed; ///< the objects that the service has, as far as it was asked and lists them
    WebFailure failure;

    qint64 fetched() const { return indexed + refused + pending; }
    /// Whether what the index has is all that the service has announced or lists.
    bool isComplete(const QSet<QString> &held) const;
    bool isEnded() const { return state == State::Done || state == State::Failed; }
};

/// The download of one study: a plain value of the coordinator's.
struct DownloadJob
{
    QString studyUid;
    QString label;
    QString service; ///< the address that it comes from, as CloudSession::plainAddress() makes it
    bool isStopped = false;
    QVector<SeriesJob> series;
    FetchRate rate;
    qint64 bytes = 0;

    SeriesJob *find(const QString &seriesUid);
    /// Whether it does something, or would when its time comes.
    bool isBusy(bool hasSession) const;
    bool hasFailed() const;
    /// Failed series are tried again, and so is what waits.
    void tryAgain();
    /// @param hasSession of its service. @param nowMs of the coordinator's clock
    DownloadTally tally(bool hasSession, qint64 nowMs) const;

private:
    DownloadState state(bool hasSession, qint64 nowMs) const;
};
