#include "webfailuretext.h"

#include "transfertext.h"

#include <QCoreApplication>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(WebFailureText)
};

QString numbered(const QString &sentence, int status)
{
    return status > 0 ? Text::tr("%1 (%2)", "what a service answered (its number)").arg(sentence).arg(status)
                      : sentence;
}

QString plainText(const WebFailure &failure)
{
    switch (failure.problem) {
    case WebProblem::None:
        return {};
    case WebProblem::Stopped:
        return Text::tr("Stopped");
    case WebProblem::NoRoute:
        return Text::tr("The service cannot be reached");
    case WebProblem::TimedOut:
        return Text::tr("The service did not answer in time");
    case WebProblem::LineCut:
        return Text::tr("The connection was lost on the way");
    case WebProblem::CertificateRefused:
        return Text::tr("The certificate of the service is not to be trusted");
    case WebProblem::NoTls:
        return Text::tr(
            "No secure connection: what answers at this address and port is not a TLS service, or "
            "speaks another kind of TLS");
    case WebProblem::PlainRefused:
        return Text::tr("The password would travel unencrypted: the address must begin with https://, or "
                        "plain connections must be allowed");
    case WebProblem::Unauthorized:
        return Text::tr("Wrong user or password, or the sign-in has ended");
    case WebProblem::Forbidden:
        return Text::tr("This user is not allowed to do that");
    case WebProblem::NotFound:
        return Text::tr("The service does not have it");
    case WebProblem::Conflict:
        return Text::tr("The service has an object that is in conflict with this one");
    case WebProblem::NotDicomWeb:
        return Text::tr("Something answers at this address, but it is not a DICOMweb service");
    case WebProblem::Refused:
        return numbered(Text::tr("The service refused it"), failure.status);
    case WebProblem::ServerError:
        return numbered(Text::tr("The service failed"), failure.status);
    case WebProblem::BadAnswer:
        return Text::tr("The answer of the service cannot be understood");
    case WebProblem::FileUnreadable:
        return Text::tr("The file cannot be read");
    case WebProblem::DiskFull:
        return Text::tr("The disk is full");
    case WebProblem::NoSecret:
        return Text::tr("There is no remembered password to sign in with");
    case WebProblem::Incomplete:
        return Text::tr("The service gave fewer images than it has");
    case WebProblem::Busy:
        return numbered(Text::tr("The service is busy"), failure.status);
    }
    return {};
}

/// Whether the service or the system knows more than the sentence says.
bool hasMoreToSay(WebProblem problem)
{
    switch (problem) {
    case WebProblem::NoRoute:
    case WebProblem::CertificateRefused:
    case WebProblem::NoTls:
    case WebProblem::Conflict:
    case WebProblem::Refused:
    case WebProblem::ServerError:
    case WebProblem::BadAnswer:
    case WebProblem::FileUnreadable:
    case WebProblem::DiskFull:
    case WebProblem::NoSecret:
        return true;
    default:
        return false;
    }
}

} // namespace

QString WebFailureText::of(const WebFailure &failure)
{
    return TransferText::withDetail(
        plainText(failure), hasMoreToSay(failure.problem) ? failure.detail.trimmed() : QString());
}
