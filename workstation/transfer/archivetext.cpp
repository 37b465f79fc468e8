#include "archivetext.h"

#include "transfertext.h"

#include <QCoreApplication>
#include <QDate>
#include <QLocale>

namespace {

/// Translation context of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ArchiveText)
};

constexpr quint16 unknownDestination = 0xa801;
constexpr quint16 someFailed = 0xb000;
constexpr quint16 noMemory = 0xa700;
constexpr quint16 noMemoryForMatches = 0xa701;
constexpr quint16 noMemoryForObjects = 0xa702;
constexpr quint16 badQuestion = 0xa900;
constexpr quint16 notSupported = 0x0122;
constexpr quint16 notAuthorized = 0x0124;
constexpr int namedFailures = 3;

QString statusText(quint16 status)
{
    switch (status) {
    case unknownDestination:
        return Text::tr("The archive does not know this workstation as a destination");
    case noMemory:
    case noMemoryForMatches:
    case noMemoryForObjects:
        return Text::tr("The archive is out of resources");
    case badQuestion:
        return Text::tr("The archive does not understand the question");
    case notSupported:
        return Text::tr("The archive does not offer this service");
    case notAuthorized:
        return Text::tr("The archive does not allow it");
    default:
        return Text::tr("The archive has refused or failed");
    }
}

QString refusal(quint16 status, const QString &comment)
{
    const QString text = Text::tr("%1 (%2)").arg(
        statusText(status), QString::number(status, 16).toUpper().rightJustified(4, '0'));
    return comment.isEmpty() ? text : Text::tr("%1: %2").arg(text, comment);
}

QString failedText(const RetrieveResult &result)
{
    const int failed = qMax(result.progress.failed, result.failedInstances.size());
    if (failed == 0) {
        return {};
    }
    QString text = Text::tr("%n image(s) not sent or not taken", nullptr, failed);
    if (!result.failedInstances.isEmpty()) {
        const QString names =
            QStringList(result.failedInstances.mid(0, namedFailures)).join(QStringLiteral(", "));
        text = result.failedInstances.size() > namedFailures ? Text::tr("%1: %2, …").arg(text, names)
                                                             : Text::tr("%1: %2").arg(text, names);
    }
    return text;
}

} // namespace

namespace ArchiveText {

QString problemOf(const ArchiveAnswer &answer)
{
    if (answer.failure.problem == NetworkProblem::Stopped) {
        return Text::tr("The search was stopped");
    }
    if (answer.failure.problem == NetworkProblem::NoContext) {
        return Text::tr("This destination cannot be searched; choose an archive that can");
    }
    if (!answer.failure.isNone()) {
        return TransferText::of(answer.failure);
    }
    return answer.status == 0 ? QString() : refusal(answer.status, answer.failure.detail);
}

QString of(const ArchiveAnswer &answer, int studies)
{
    const QString problem = problemOf(answer);
    QString text = studies == 0 && problem.isEmpty() ? Text::tr("The archive has no such study.")
                                                     : Text::tr("%n study(ies) found.", nullptr, studies);
    if (!problem.isEmpty()) {
        text = studies == 0 ? problem + QLatin1Char('.') : Text::tr("%1. %2").arg(problem, text);
    }
    if (answer.isCutOff) {
        text = Text::tr("%1 There may be more: the archive was stopped there. Ask for less.").arg(text);
    }
    if (answer.unreadable > 0) {
        text = Text::tr("%1 %2").arg(
            text, Text::tr("%n answer(s) could not be read.", nullptr, answer.unreadable));
    }
    return text;
}

QString stateOf(const Retrieval &retrieval)
{
    switch (retrieval.state) {
    case RetrievalState::Waiting:
        return Text::tr("Waiting");
    case RetrievalState::Running:
        return Text::tr("Running");
    case RetrievalState::Cancelled:
        return Text::tr("Cancelled");
    case RetrievalState::Ended:
        break;
    }
    return retrieval.isGood() ? Text::tr("Retrieved") : Text::tr("Failed");
}

QString countOf(const Retrieval &retrieval)
{
    const RetrieveProgress &now = retrieval.result.progress;
    const int done = now.completed + now.warned;
    const int total =
        now.remaining >= 0 ? done + now.failed + now.remaining : qMax(retrieval.expected, done + now.failed);
    const QLocale locale;
    return total > 0 ? Text::tr("%1 of %2 images").arg(locale.toString(done), locale.toString(total))
                     : QString();
}

QString noticeOf(const Retrieval &retrieval)
{
    if (!retrieval.isOver()) {
        return {};
    }
    if (!retrieval.spoolProblem.isEmpty()) {
        return Text::tr("What comes cannot be kept beside the index: %1").arg(retrieval.spoolProblem);
    }
    if (retrieval.needsReceiver) {
        return Text::tr("The archive can only send the images to this workstation: switch receiving on in "
                        "the settings, and tell the archive of it");
    }
    const RetrieveResult &result = retrieval.result;
    QStringList parts;
    if (!result.failure.isNone() && retrieval.state != RetrievalState::Cancelled) {
        parts += TransferText::of(result.failure);
    } else if (result.status != 0 && result.status != someFailed) {
        parts += refusal(result.status, result.failure.detail);
    }
    const QString failed = failedText(result);
    return (failed.isEmpty() ? parts : parts << failed).join(QStringLiteral("; "));
}

QString heldOf(int images, int total)
{
    if (images == 0) {
        return {};
    }
    return total > images ? Text::tr("%1 of %2").arg(QLocale().toString(images), QLocale().toString(total))
                          : Text::tr("Yes");
}

QString dateOf(const QString &date)
{
    const QDate day = QDate::fromString(date.left(8), QStringLiteral("yyyyMMdd"));
    return day.isValid() ? day.toString(Qt::ISODate) : date;
}

} // namespace ArchiveText
