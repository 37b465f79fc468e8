#pragma once

#include "imagebase_export.h"

#include <QDateTime>
#include <QFile>
#include <QString>

#include <mutex>

/// What went wrong with an object that a peer sent, or with the peer itself. The GUI makes the sentence.
enum class ReceiveProblem : quint8 {
    None,
    UnknownCaller, ///< its AE title is not among those that may send
    WrongCalledTitle, ///< it called us by another AE title
    Busy, ///< too many associations at once
    DiskFull, ///< no room for the object, or for its record
    WriteFailed, ///< the system refused to write it; detail is its word
    BadRequest, ///< the request names no class or instance, malformed ones, or has no data
    OtherObject, ///< the data are of another instance or class than the request said
    NotReadable, ///< the data cannot be indexed; detail is the reader's word
    LineLost, ///< the peer left in the middle of the object
    OtherContentKept, ///< other content is indexed under the same UID; the object was kept aside
    IndexFailed ///< the record or its file cannot be written now; the object waits. detail is the reason
};

/// One line of the journal.
struct ReceiveEvent
{
    ReceiveProblem problem = ReceiveProblem::None;
    QString peer; ///< its AE title
    QString sopInstanceUid; ///< as the peer said it; may be empty
    QString detail; ///< words of the system or a parser, or where the object was kept
    QDateTime time;
};

/// What has come in since the start, at one moment.
struct ReceiveCounts
{
    qint64 received = 0; ///< kept; a peer whose line broke just then may not have heard of it
    qint64 refused = 0; ///< objects answered with a failure, and associations rejected
    qint64 indexed = 0; ///< of the received ones: their verdict is committed
    qint64 keptAside = 0; ///< of the received ones: kept, but not as a record
    int associations = 0; ///< open now
    ReceiveEvent lastProblem;
};

/**
 * Counts what comes in, and writes each problem into a text file beside the objects: one line each with its
 * time, peer, UID and reason. The file is begun anew when it has become large, and the one before it kept.
 * Any thread.
 */
class IMAGEBASE_EXPORT ReceiveJournal
{
public:
    /// @param file the text file, made with the first problem; empty for none
    explicit ReceiveJournal(const QString &file);

    QString file() const { return m_path; }
    ReceiveCounts counts() const;

    void countReceived();
    void countIndexed(qint64 objects);
    void countKeptAside();
    void addAssociations(int number);
    /// @param refused whether the peer was told of a failure for the object, or turned away
    void note(ReceiveEvent event, bool refused);

private:
    void write(const ReceiveEvent &event);

    const QString m_path;
    mutable std::mutex m_mutex;
    ReceiveCounts m_counts;
};
