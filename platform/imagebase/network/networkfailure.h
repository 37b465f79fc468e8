#pragma once

#include <QString>

/// Why an association or a service over it failed. The GUI makes the sentence. Numbers are stored: new ones
/// go to the end.
enum class NetworkProblem : quint8 {
    None,
    BadAddress, ///< the node has no host, no valid port, or no valid AE title
    UnknownHost, ///< nobody knows the name
    Refused, ///< nothing listens there
    Unreachable, ///< no way to that address; detail is the system's word
    NoAnswer, ///< the time-out of connecting, of the association or of a request has passed
    RejectedCalling, ///< the peer does not know our AE title
    RejectedCalled, ///< the peer does not go by the AE title that we called
    RejectedBusy, ///< the peer has no room at the moment
    RejectedOther, ///< detail is the peer's reason
    NoContext, ///< the peer takes none of what was offered
    PeerAborted, ///< the peer ended the association in the middle
    PeerGone, ///< the line broke, or the peer closed it
    Stopped, ///< abort() was called
    BadAnswer ///< what came is no answer to what was asked; detail is the toolkit's word
};

/// How an attempt ended.
struct NetworkFailure
{
    NetworkProblem problem = NetworkProblem::None;
    QString detail; ///< words of the system or the toolkit; may be empty

    bool isNone() const { return problem == NetworkProblem::None; }
    /// Whether asking again without a change at either end makes no sense.
    bool isPermanent() const
    {
        return problem == NetworkProblem::BadAddress || problem == NetworkProblem::RejectedCalling
            || problem == NetworkProblem::RejectedCalled || problem == NetworkProblem::NoContext;
    }
};
