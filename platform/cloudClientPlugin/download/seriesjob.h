#pragma once

#include "webfailure.h"

#include <QSet>
#include <QString>

/// A series of a download, and how far it is: a plain value.
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
    int attempts = 0; ///< failures that may pass, since the index took something last
    int vainRounds = 0; ///< in a row, in which objects came and the index has no more of it than before
    qint64 dueMs = 0; ///< when it may be tried again
    int heldBefore = -1; ///< objects of the index, before the round that runs
    bool hasReceived = false; ///< in that round
    bool isRecounted = false; ///< the service was asked for a list, after an answer that was short or at once
    QSet<QString> listed; ///< the objects that the service has, as far as it was asked and lists them
    WebFailure failure;

    qint64 fetched() const { return indexed + refused + pending; }
    bool isEnded() const { return state == State::Done || state == State::Failed; }
    bool isDue(qint64 nowMs) const { return state == State::Waiting && dueMs <= nowMs; }
    /// Whether all that came of it has its verdict, and nothing more comes.
    bool hasLanded() const { return state == State::Landing && pending == 0; }

    /// @param expectedNow objects, as the service says; -1 where it does not
    void askFor(int expectedNow);
    /// It failed for good, or waits out a pause: it may be tried at once.
    void tryAgain();
    /// @param held how many objects the index has before it is fetched
    /// @return false where it is asked no more, as too often nothing of what came was of use
    bool begin(int held);
    /// An object of it is here.
    void receive();
    /// An object of it has its verdict.
    void land(bool isTaken);
    /// The service lists these objects; none where it was not asked.
    void noteListed(const QSet<QString> &objects);
    /// It waits for another try where the failure may pass, and has failed otherwise.
    void fail(const WebFailure &why, qint64 nowMs);
    /// What has landed is done where the index holds all of it, and otherwise asked for by a list once.
    /// @param held the objects that the index has. @return whether it has ended
    bool settle(const QSet<QString> &held);

private:
    bool isComplete(const QSet<QString> &held) const;
};
