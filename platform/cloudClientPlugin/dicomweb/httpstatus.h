#pragma once

#include "webfailure.h"

/// What statuses and connections of HTTP come to, whoever carries the request.
namespace HttpStatus {

constexpr int firstError = 400;

/// @param status as the service gave it; None where it says that all went well
WebFailure failureOf(int status, const QString &reason);

} // namespace HttpStatus
