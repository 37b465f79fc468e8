#pragma once

#include "storerequest.h"
#include "uploadbatch.h"

/// Decides what an answer means for a file. Without a state of its own.
namespace UploadJudge {

enum class Deed : quint8 {
    Record, ///< stored, or failed for good: as outcome says
    Again, ///< as it was
    AgainAlone, ///< the answer may have been about others
    LookAgain, ///< its path or its UID may be others by now; without another, as AgainAlone
};

struct Judgement
{
    Deed deed = Deed::Again;
    UploadFault::Kind fault = UploadFault::Kind::None;
    int reason = 0;
    WebFailure failure;
};

/// Whether it is the service, not the objects, that the failure is about.
bool isOfService(const WebFailure &failure);
/// Whether a failure of the service may have been brought about by an object of the request.
bool maySuspect(const WebFailure &failure);

/// @param isAlone whether the file was the only one of its request
/// @param isHealthy whether the service has acknowledged others about when the file's trouble began, or since
Judgement judge(const QueuedFile &file, const StoreVerdict &verdict, const WebFailure &failure, bool isAlone,
    bool isHealthy);

} // namespace UploadJudge
