#include "uploadjudge.h"

namespace {

using UploadJudge::Deed;
using UploadJudge::Judgement;
using Kind = UploadFault::Kind;

constexpr int mostTries = 4;
constexpr int mostTriesUnproven = 12; ///< some minutes, where the service has not been seen to be well

Judgement failed(Kind kind, int reason, const WebFailure &failure = {})
{
    return {Deed::Record, kind, reason, failure};
}

/// A service that answers, only never well, may be asked for ever; a file of its own is not.
bool isWorn(const QueuedFile &file, const WebFailure &failure, bool isHealthy)
{
    const int tries = file.tries + 1;
    return (isHealthy && tries >= mostTries) || (failure.status > 0 && tries >= mostTriesUnproven);
}

} // namespace

bool UploadJudge::isOfService(const WebFailure &failure)
{
    switch (failure.problem) {
    case WebProblem::None:
    case WebProblem::Stopped:
    case WebProblem::Conflict:
    case WebProblem::Refused:
    case WebProblem::FileUnreadable:
    case WebProblem::Unauthorized:
        return false;
    default:
        return true;
    }
}

bool UploadJudge::maySuspect(const WebFailure &failure)
{
    constexpr int firstOfGateways = 502; // to 504: what stands before the service has not reached it
    constexpr int lastOfGateways = 504;
    const bool isGateway = failure.status >= firstOfGateways && failure.status <= lastOfGateways;
    return (failure.problem == WebProblem::ServerError && !isGateway)
        || failure.problem == WebProblem::LineCut || failure.problem == WebProblem::TimedOut
        || failure.problem == WebProblem::BadAnswer;
}

Judgement UploadJudge::judge(const QueuedFile &file, const StoreVerdict &verdict, const WebFailure &failure,
    bool isAlone, bool isHealthy)
{
    if (verdict.isStored()) {
        return {Deed::Record, Kind::None, verdict.reason, {}};
    }
    if (verdict.state == StoreVerdict::State::Refused) {
        return isAlone ? failed(Kind::Refused, verdict.reason) : Judgement{Deed::AgainAlone, {}, 0, {}};
    }
    switch (failure.problem) {
    case WebProblem::None: // taken, and not a word about this one
        if (isAlone && file.tries + 1 >= mostTries) {
            return failed(Kind::Unanswered, 0);
        }
        return {Deed::LookAgain, {}, 0, {}};
    case WebProblem::FileUnreadable:
        return {failure.detail == file.file.path ? Deed::LookAgain : Deed::Again, {}, 0, {}};
    case WebProblem::Conflict:
    case WebProblem::Refused:
        return isAlone ? failed(Kind::Request, failure.status, failure)
                       : Judgement{Deed::AgainAlone, {}, 0, {}};
    default:
        if (!maySuspect(failure)) {
            return {};
        }
        return isAlone && isWorn(file, failure, isHealthy) ? failed(Kind::Request, failure.status, failure)
                                                           : Judgement{Deed::AgainAlone, {}, 0, {}};
    }
}
