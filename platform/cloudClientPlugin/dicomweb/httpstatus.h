#pragma once

#include "webfailure.h"

/// What statuses and connections of HTTP come to, whoever carries the request.
namespace HttpStatus {

constexpr int firstError = 400;

/// Whether the same request is to be sent to another place; what has a body is sent again only where the
/// service says that it stays the same request.
bool isRedirection(int status, bool hasBody);

/// @param status as the service gave it; None where it says that all went well
WebFailure failureOf(int status, const QString &reason);

} // namespace HttpStatus
