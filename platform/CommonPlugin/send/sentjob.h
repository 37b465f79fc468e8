#pragma once

#include <QString>
#include <QVector>

/// How a send of the dialog stands.
enum class SendState {
    Waiting, ///< its turn has not come, or the peer is to be tried again
    Sending,
    Paused,
    Ended, ///< nothing is left to be sent; failures may be retried
    Cancelled
};

/// One send that a user has asked for in the dialog, as its host tells it: one job for each destination.
struct SentJob
{
    qint64 id = 0; ///< the host's; above 0
    QString destination; ///< for people: its name and AE title
    QString subject; ///< for people: whose images; empty where the host does not say
    SendState state = SendState::Waiting;
    /// Says why it waits, for people; empty where it does not, or where there is nothing to say.
    QString notice;
    bool isAway = false; ///< its destination cannot be worked with at the moment
    qint64 total = 0; ///< of its files; what is no instance is taken off once it is known
    qint64 accepted = 0; ///< by the peer, with warnings or without
    qint64 warned = 0; ///< of the accepted ones
    qint64 failed = 0;
    qint64 skipped = 0; ///< files that are no DICOM objects, and folders; not in the total

    qint64 left() const { return total - accepted - failed; }
    bool isOver() const { return state == SendState::Ended || state == SendState::Cancelled; }
};

/// An object that a peer did not take.
struct SendFailure
{
    QString file;
    QString sopInstanceUid; ///< empty where the file could not be read
    QString reason; ///< for people
};
