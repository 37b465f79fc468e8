#pragma once

#include "networkfailure.h"

class OFCondition;
struct T_ASC_Parameters;

/// What a peer's refusals, and ends of an association that was open, mean.
namespace ScuFailure {

/// Of the parameters that came back with the rejection.
NetworkFailure ofRejection(T_ASC_Parameters *parameters);
/// Of DCMTK's word on a line that neither we ended nor the time.
NetworkFailure ofLine(const OFCondition &condition);

} // namespace ScuFailure
