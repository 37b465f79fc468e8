#pragma once

#include <QMetaType>
#include <QString>

/// Why a DICOMweb service did not do what it was asked.
enum class WebProblem : quint8 {
    None,
    Stopped, ///< by us
    NoRoute, ///< name not found, connection refused, network unreachable
    TimedOut,
    LineCut, ///< in the middle of a request or an answer
    CertificateRefused,
    PlainRefused, ///< a password would have travelled unencrypted
    Unauthorized, ///< wrong user or password, or the session has ended
    Forbidden,
    NotFound,
    Conflict,
    NotDicomWeb, ///< something answers there, but no DICOMweb service
    Refused, ///< any other answer of the 400s
    ServerError, ///< an answer of the 500s
    BadAnswer, ///< an answer that cannot be understood
    FileUnreadable, ///< a file of ours
    DiskFull,
    NoSecret, ///< there is no password to sign in with; the detail says why
    Incomplete, ///< fewer objects came than the service has announced or lists
    Busy, ///< asked too much for now
    NoTls, ///< no secure connection came about, and the certificate was not why: most often a plain service
};

/// A problem, the service's or the system's own words on it, and the HTTP status where there was one.
struct WebFailure
{
    WebProblem problem = WebProblem::None;
    QString detail; ///< never holds a credential
    int status = 0;

    bool isNone() const { return problem == WebProblem::None; }
    /// Whether the same may succeed a little later.
    bool isPassing() const
    {
        return problem == WebProblem::NoRoute || problem == WebProblem::TimedOut
            || problem == WebProblem::LineCut || problem == WebProblem::ServerError
            || problem == WebProblem::Busy;
    }
};

Q_DECLARE_METATYPE(WebFailure)
