#pragma once

#include "scuassociation.h"

/// Asks a node whether it is there and answers to its AE title (C-ECHO).
class IMAGEBASE_EXPORT EchoScu
{
public:
    explicit EchoScu(const DicomNode &node, const ScuOptions &options = {});

    /// Blocks, within the times of the options; called once. @return no failure where the node answered with
    /// success
    NetworkFailure run();
    /// Any thread: run() ends within milliseconds.
    void abort() { m_association.abort(); }

private:
    ScuAssociation m_association;
};
