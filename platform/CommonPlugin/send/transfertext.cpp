#include "transfertext.h"

#include "durationtext.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TransferText)
};

QString number(qint64 value)
{
    return QLocale().toString(value);
}

QString plainText(NetworkProblem problem)
{
    switch (problem) {
    case NetworkProblem::None:
        return {};
    case NetworkProblem::BadAddress:
        return Text::tr("The address, port or AE title of the destination is not valid");
    case NetworkProblem::UnknownHost:
        return Text::tr("Its name is not known on this network");
    case NetworkProblem::Refused:
        return Text::tr("Nothing listens at that address and port");
    case NetworkProblem::Unreachable:
        return Text::tr("There is no way to that address");
    case NetworkProblem::NoAnswer:
        return Text::tr("It did not answer in time");
    case NetworkProblem::RejectedCalling:
        return Text::tr("It does not know the AE title of this workstation");
    case NetworkProblem::RejectedCalled:
        return Text::tr("It does not go by this AE title");
    case NetworkProblem::RejectedBusy:
        return Text::tr("It is too busy at the moment");
    case NetworkProblem::RejectedOther:
        return Text::tr("It rejected the connection");
    case NetworkProblem::NoContext:
        return Text::tr("It takes none of the kinds of data that were offered");
    case NetworkProblem::PeerAborted:
        return Text::tr("It broke off the transfer");
    case NetworkProblem::PeerGone:
        return Text::tr("The connection was lost");
    case NetworkProblem::Stopped:
        return Text::tr("Stopped");
    case NetworkProblem::BadAnswer:
        return Text::tr("Its answer could not be understood");
    }
    return {};
}

/// The meaning of a status of C-STORE; of the families only the first digits count.
QString plainText(quint16 status)
{
    switch (status) {
    case 0x0000:
        return Text::tr("Accepted");
    case 0x0105:
    case 0x0106:
        return Text::tr("A value is not valid");
    case 0x0110:
        return Text::tr("Processing failed there");
    case 0x0111:
        return Text::tr("It has this object already");
    case 0x0117:
        return Text::tr("The object's identifier is not valid");
    case 0x0118:
    case 0x0122:
        return Text::tr("It does not take objects of this kind");
    case 0x0124:
        return Text::tr("Not authorized");
    case 0xB000:
        return Text::tr("Accepted, with values changed there");
    case 0xB006:
        return Text::tr("Accepted, with values left out there");
    case 0xB007:
        return Text::tr("Accepted, though the data do not fit their kind");
    default:
        break;
    }
    switch (status >> 8U) {
    case 0xA7:
        return Text::tr("Out of resources");
    case 0xA9:
        return Text::tr("The data do not fit their kind");
    default:
        break;
    }
    switch (status >> 12U) {
    case 0xB:
        return Text::tr("Accepted, with a warning");
    case 0xC:
        return Text::tr("It cannot understand the data");
    default:
        return Text::tr("Refused");
    }
}

/// What went wrong on this side, or before the peer was asked.
QString plainText(StoreProblem problem)
{
    switch (problem) {
    case StoreProblem::FileGone:
        return Text::tr("The file does not exist any more");
    case StoreProblem::FileUnreadable:
        return Text::tr("The file cannot be read");
    case StoreProblem::NotDicom:
        return Text::tr("No DICOM object");
    case StoreProblem::ClassNotAccepted:
        return Text::tr("It does not take objects of this kind");
    case StoreProblem::SyntaxNotAccepted:
        return Text::tr("It takes neither the compression of this object nor uncompressed objects");
    case StoreProblem::TooLarge:
        return Text::tr("It takes uncompressed objects only, and this one is too large to be decompressed");
    default: // told by the status or by the network
        return {};
    }
}

} // namespace

namespace TransferText {

QString withDetail(const QString &sentence, const QString &detail)
{
    return detail.isEmpty()
        ? sentence
        : Text::tr("%1: %2", "what happened: in the system's words").arg(sentence, detail);
}

QString of(const NetworkFailure &failure)
{
    switch (failure.problem) {
    case NetworkProblem::Unreachable:
    case NetworkProblem::RejectedOther:
    case NetworkProblem::BadAnswer:
        return withDetail(plainText(failure.problem), failure.detail);
    default: // the detail says the same in the system's words
        return plainText(failure.problem);
    }
}

QString of(const StoreOutcome &outcome)
{
    switch (outcome.problem) {
    case StoreProblem::Network:
        return of(outcome.network);
    case StoreProblem::None:
    case StoreProblem::OutOfResources:
    case StoreProblem::Refused:
        return withDetail(ofStatus(outcome.status), outcome.detail);
    default:
        return withDetail(plainText(outcome.problem), outcome.detail);
    }
}

QString ofStatus(quint16 status)
{
    if (status == 0) {
        return plainText(status);
    }
    return Text::tr("%1 (%2)", "meaning of a status (its hexadecimal number)")
        .arg(plainText(status), QString::number(status, 16).rightJustified(4, QLatin1Char('0')).toUpper());
}

QString ofState(SendState state)
{
    switch (state) {
    case SendState::Waiting:
        return Text::tr("Waiting");
    case SendState::Sending:
        return Text::tr("Sending");
    case SendState::Paused:
        return Text::tr("Paused");
    case SendState::Ended:
        return Text::tr("Finished");
    case SendState::Cancelled:
        return Text::tr("Cancelled");
    }
    return {};
}

QString ofEcho(const NetworkFailure &failure, qint64 milliseconds)
{
    return failure.isNone() ? Text::tr("Answers (%1 ms)").arg(number(milliseconds)) : of(failure);
}

QString ofFault(DestinationFault fault, const QString &name)
{
    switch (fault) {
    case DestinationFault::None:
        return {};
    case DestinationFault::NoName:
        return Text::tr("A destination needs a name.");
    case DestinationFault::BadName:
        return Text::tr("The name %1 of a destination has a character that is not allowed.").arg(name);
    case DestinationFault::SameName:
        return Text::tr("Two destinations are called %1.").arg(name);
    case DestinationFault::BadAeTitle:
        return Text::tr("The AE title of %1 must be 1 to 16 characters of plain ASCII without backslash.")
            .arg(name);
    case DestinationFault::NoAddress:
        return Text::tr("The destination %1 needs an address.").arg(name);
    case DestinationFault::BadPort:
        return Text::tr("The port of %1 must be 1 to 65535.").arg(name);
    }
    return {};
}

QString ofDestination(const QString &name, const QString &aeTitle)
{
    return name.isEmpty() || name == aeTitle
        ? aeTitle
        : Text::tr("%1 (%2)", "name of a destination (its AE title)").arg(name, aeTitle);
}

QString ofPatients(const QStringList &names, int count)
{
    const QString listed = names.join(Text::tr("; ", "between names, which may have commas"));
    const int more = count - names.size();
    return more > 0 ? Text::tr("%1 and %Ln more", "names of patients", more).arg(listed) : listed;
}

QString ofCounts(qint64 sent, qint64 total, qint64 failed)
{
    const QString counts = Text::tr("%1 of %Ln image(s) sent", nullptr, int(total)).arg(number(sent));
    return failed > 0 ? Text::tr("%1, %2 failed").arg(counts, number(failed)) : counts;
}

QString ofRate(double perSecond, qint64 millisecondsLeft)
{
    if (perSecond <= 0) {
        return {};
    }
    const QString rate = perSecond < 10 ? QLocale().toString(perSecond, 'f', 1) : number(qRound64(perSecond));
    return millisecondsLeft < 0 ? Text::tr("%1 images/s").arg(rate)
                                : Text::tr("%1 images/s, %2 left").arg(rate, durationText(millisecondsLeft));
}

} // namespace TransferText
