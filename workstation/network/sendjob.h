#pragma once

#include "dicomnode.h"
#include "sendlabel.h"
#include "storeoutcome.h"

#include <QDateTime>
#include <QVector>

/// Who has asked for a job. Stored.
enum class SendSource : quint8 { Dialog = 0, Forwarding = 1 };

/// What a person wants of a job. Stored.
enum class SendHold : quint8 { None = 0, Paused = 1, Cancelled = 2 };

enum class SendJobState : quint8 {
    Waiting, ///< its turn has not come, or the peer is tried again at nextTry
    Sending,
    Paused,
    Ended, ///< nothing is left to be sent; what failed may be retried
    Cancelled
};

/// One request to send files to a node, as it stands.
struct SendJob
{
    qint64 id = 0; ///< above 0; grows with time
    DicomNode node;
    SendLabel label;
    SendSource source = SendSource::Dialog;
    SendJobState state = SendJobState::Waiting;
    QDateTime created;
    QDateTime ended; ///< invalid until it has ended
    qint64 unlisted = 0; ///< paths that nobody has looked at yet
    qint64 total = 0; ///< objects found among the paths that were looked at
    qint64 accepted = 0; ///< of these, taken by the peer, with a warning or without
    qint64 warned = 0; ///< of the accepted ones
    qint64 failed = 0; ///< for good
    qint64 skippedFolders = 0;
    qint64 skippedFiles = 0; ///< no DICOM objects, or no paths at all
    NetworkFailure trouble; ///< why the node cannot be worked with at the moment
    QDateTime nextTry; ///< valid where it is tried again

    qint64 left() const { return total - accepted - failed; }
    bool isOver() const { return state == SendJobState::Ended || state == SendJobState::Cancelled; }
};

enum class SendObjectState : quint8 {
    Waiting = 0,
    Sending = 1,
    Accepted = 2,
    Failed = 3,
};

/// One object of a job, with the log of what became of it.
struct SendObject
{
    qint64 id = 0;
    qint64 job = 0;
    QString path;
    QString sopClassUid;
    QString sopInstanceUid;
    QString transferSyntaxUid;
    SendObjectState state = SendObjectState::Waiting;
    StoreOutcome outcome; ///< of the last attempt
    int attempts = 0;
    QDateTime changed; ///< of the last attempt; invalid before the first
};
