#include "scufailure.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/assoc.h>
#include <dcmtk/dcmnet/cond.h>
#include <dcmtk/dcmnet/dimse.h>

NetworkFailure ScuFailure::ofRejection(T_ASC_Parameters *parameters)
{
    T_ASC_RejectParameters reject = {};
    ASC_getRejectParameters(parameters, &reject);
    OFString words;
    ASC_printRejectParameters(words, &reject);
    const QString detail = QString::fromLatin1(words.c_str()).simplified();
    switch (reject.reason) {
    case ASC_REASON_SU_CALLINGAETITLENOTRECOGNIZED:
        return {NetworkProblem::RejectedCalling, detail};
    case ASC_REASON_SU_CALLEDAETITLENOTRECOGNIZED:
        return {NetworkProblem::RejectedCalled, detail};
    case ASC_REASON_SP_PRES_TEMPORARYCONGESTION:
    case ASC_REASON_SP_PRES_LOCALLIMITEXCEEDED:
        return {NetworkProblem::RejectedBusy, detail};
    default:
        return {NetworkProblem::RejectedOther, detail};
    }
}

NetworkFailure ScuFailure::ofLine(const OFCondition &condition)
{
    const QString detail = QString::fromLatin1(condition.text());
    if (condition == DUL_PEERABORTEDASSOCIATION) {
        return {NetworkProblem::PeerAborted, detail};
    }
    const bool isLine = condition == DUL_NETWORKCLOSED || condition == DUL_PEERREQUESTEDRELEASE
        || condition.code() == DULC_TCPIOERROR || condition == DIMSE_SENDFAILED;
    return {isLine ? NetworkProblem::PeerGone : NetworkProblem::BadAnswer, detail};
}
