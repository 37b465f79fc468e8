#pragma once

#include "dicomnode.h"
#include "imagebase_export.h"
#include "networkfailure.h"

#include <QByteArray>
#include <QVector>

#include <memory>

class DcmDataset;
class OFCondition;
struct T_ASC_Association;
struct T_DIMSE_Message;

/// One presentation context to offer: a service and the ways of encoding its data.
struct ScuContext
{
    QByteArray abstractSyntax;
    QVector<QByteArray> transferSyntaxes; ///< the best first
    bool weProvide = false; ///< role selection: the peer calls this service of ours (C-GET)

    bool operator==(const ScuContext &other) const
    {
        return abstractSyntax == other.abstractSyntax && transferSyntaxes == other.transferSyntaxes
            && weProvide == other.weProvide;
    }
};

/// How we present ourselves and how long we wait.
struct ScuOptions
{
    QString ownAeTitle = QStringLiteral("PATIENTMANAGER");
    int connectMs = 10'000; ///< for a name and the connection
    int associationMs = 30'000; ///< for the answer to an association request or release
    int requestMs = 60'000; ///< for an answer, and for a line that takes or gives nothing
    int longestPdu = 131'072; ///< what we receive; the peer says its own
};

/**
 * An association that we request: made, used and ended on one thread.
 *
 * open() and every service over it block that thread, within the times of the options; abort() from any other
 * thread ends them within milliseconds. Nagle's algorithm is off.
 */
class IMAGEBASE_EXPORT ScuAssociation
{
public:
    /// As many contexts as one association can have.
    static constexpr int mostContexts = 128;

    ScuAssociation(DicomNode node, ScuOptions options);
    /// Releases, where it is open and the peer is still there.
    ~ScuAssociation();
    ScuAssociation(const ScuAssociation &) = delete;
    ScuAssociation &operator=(const ScuAssociation &) = delete;

    const DicomNode &node() const;
    const ScuOptions &options() const;

    /// Connects and asks for the association. @param contexts at most mostContexts. Fails with NoContext
    /// where the peer accepts none of them. May be called again after it was closed, not after abort().
    NetworkFailure open(const QVector<ScuContext> &contexts);
    bool isOpen() const;
    /// What was offered to the open association.
    const QVector<ScuContext> &offered() const;

    /// The accepted context for a service in exactly this transfer syntax; 0 where there is none.
    int contextFor(const QByteArray &abstractSyntax, const QByteArray &transferSyntax) const;
    /// Whether any context for the service was accepted.
    bool accepts(const QByteArray &abstractSyntax) const;

    /// Says goodbye and closes the line.
    void release();
    /// Closes the line after telling the peer that something is wrong.
    void close();
    /// Any thread, any time; for good.
    void abort();
    bool isAborted() const;

    /// Whether the peer has said something, or has gone, within a time; false after abort() too. What it says
    /// is read by the services.
    bool waitForData(int milliseconds) const;

    /// How much a peer may send until a command is there. DCMTK reads what is nested by recursion: a bare
    /// command fits the usual stack of a thread, one that may share its packets with data wants stackBytes.
    enum class CommandSize { Bare, WithData };
    static constexpr unsigned stackBytes = 64U << 20U;
    /// Waits for the next command, which is bounded in bytes and in time.
    /// @param detail what it says beyond the message; null, or the caller's
    OFCondition receiveCommand(
        CommandSize size, int &context, T_DIMSE_Message &message, DcmDataset **detail) const;
    /// The same bound until endOfLimit(), for commands that DCMTK waits for.
    void limitCommand(CommandSize size) const;
    void endOfLimit() const;

    /// While on, what is sent waits for what follows it, so that both leave in one packet.
    void joinWrites(bool on) const;

    /// DCMTK's association while it is open, for the services built on this class; else null.
    T_ASC_Association *native() const;
    /// What DCMTK's word on a service of this association means.
    NetworkFailure failureOf(const OFCondition &condition) const;

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
