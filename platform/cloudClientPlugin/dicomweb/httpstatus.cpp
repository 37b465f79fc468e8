#include "httpstatus.h"

namespace {

constexpr int firstRedirect = 300;
constexpr int moved = 301;
constexpr int found = 302;
constexpr int temporaryRedirect = 307;
constexpr int permanentRedirect = 308;
constexpr int unauthorized = 401;
constexpr int forbidden = 403;
constexpr int notFound = 404;
constexpr int proxyRefused = 407;
constexpr int timedOut = 408;
constexpr int conflict = 409;
constexpr int tooMany = 429;
constexpr int firstServerError = 500;

WebProblem problemOf(int status)
{
    switch (status) {
    case unauthorized:
        return WebProblem::Unauthorized;
    case forbidden:
        return WebProblem::Forbidden;
    case notFound:
        return WebProblem::NotFound;
    case proxyRefused: // on the way there
        return WebProblem::NoRoute;
    case timedOut:
    case tooMany:
        return WebProblem::Busy;
    case conflict:
        return WebProblem::Conflict;
    default:
        return status >= firstServerError ? WebProblem::ServerError : WebProblem::Refused;
    }
}

} // namespace

bool HttpStatus::isRedirection(int status, bool hasBody)
{
    const bool staysTheSame = status == temporaryRedirect || status == permanentRedirect;
    return staysTheSame || (!hasBody && (status == moved || status == found));
}

WebFailure HttpStatus::failureOf(int status, const QString &reason)
{
    if (status >= firstError) {
        return {problemOf(status), reason, status};
    }
    // A redirection that was not followed.
    return status >= firstRedirect ? WebFailure{WebProblem::NotDicomWeb, reason, status} : WebFailure();
}
