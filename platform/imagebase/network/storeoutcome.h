#pragma once

#include "networkfailure.h"

/// Why an object was not taken, or not yet. The GUI makes the sentence. Numbers are stored: new ones go to
/// the end.
enum class StoreProblem : quint8 {
    None, ///< the peer has it
    FileGone,
    FileUnreadable, ///< detail is the system's word
    NotDicom, ///< a folder, or no object that can be stored
    ClassNotAccepted, ///< the peer does not take this kind of object
    SyntaxNotAccepted, ///< the peer takes neither its compression nor uncompressed ones that we could make
    TooLarge, ///< it would have to be decompressed, and is too large for that
    OutOfResources, ///< the peer has no room (A7xx)
    Refused, ///< the peer's answer is the status
    Network ///< no answer: see the network failure
};

/// What became of one object that was sent.
struct StoreOutcome
{
    StoreProblem problem = StoreProblem::None;
    quint16 status = 0; ///< the peer's answer, if there was one
    NetworkFailure network;
    QString detail; ///< words of the peer, the system or the toolkit; may be empty

    bool isAccepted() const { return problem == StoreProblem::None; }
    /// Taken, but the peer has changed or doubts something.
    bool isWarning() const { return isAccepted() && status != 0; }
    /// Whether the same may go well later.
    bool isPassing() const
    {
        return problem == StoreProblem::OutOfResources || problem == StoreProblem::Network;
    }
};
