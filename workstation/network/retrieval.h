#pragma once

#include "archive.h"
#include "retrievescu.h"

#include <QVector>

enum class RetrievalState {
    Waiting,
    Running,
    Ended, ///< result says how
    Cancelled
};

/// Something that was chosen in an archive, on its way into the index.
struct Retrieval
{
    qint64 id = 0; ///< given by the service
    Archive archive;
    RetrieveRequest request;
    QString title; ///< what people know it by: patient and study, or series
    int held = 0; ///< images of it that the index had when it was asked for
    int expected = 0; ///< images, as the archive has said; 0 where it has not
    RetrievalState state = RetrievalState::Waiting;
    bool needsReceiver = false; ///< it has to be sent to us, and nothing listens
    QString spoolProblem; ///< why nothing can be taken here (the system's word)
    RetrieveMethod used = RetrieveMethod::Auto; ///< Get or Move, once it runs
    RetrieveResult result;

    bool isOver() const { return state == RetrievalState::Ended || state == RetrievalState::Cancelled; }
    bool isGood() const
    {
        return state == RetrievalState::Ended && !needsReceiver && spoolProblem.isEmpty() && result.isGood();
    }
};
