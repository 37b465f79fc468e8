#include "archivetext.h"

#include "dicomdate.h"
#include "personname.h"
#include "sentences.h"
#include "transfertext.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>

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

/// Parts of one list, by the comma of the language.
QString listed(const QStringList &parts)
{
    return parts.join(Text::tr(", ", "between the parts of a list"));
}

/// Two sentences of which the first has no stop.
QString sentences(const QString &first, const QString &second)
{
    return second.isEmpty() ? Text::tr("%1.", "a sentence and its stop").arg(first)
                            : Text::tr("%1. %2", "two sentences").arg(first, second);
}

/// A series within its study; those without words have the end of their UID.
QString seriesOf(const QueryRecord &record)
{
    constexpr int shownOfUid = 12;
    const QString number = record.value(QueryTag::seriesNumber).trimmed();
    const QString description = record.value(QueryTag::seriesDescription);
    const QString end = QStringLiteral("…") + record.value(QueryTag::seriesUid).right(shownOfUid);
    QStringList parts{number.isEmpty() ? Text::tr("Series") : Text::tr("Series %1", "its number").arg(number),
        record.value(QueryTag::modality), description.isEmpty() ? end : description};
    parts.removeAll(QString());
    return listed(parts);
}

bool isPartlyHeld(const Retrieval &retrieval)
{
    return retrieval.held > 0;
}

/// Before it is fetched; not known of what an archive does not number.
bool isWhollyHeld(const Retrieval &retrieval)
{
    return retrieval.expected > 0 && retrieval.held >= retrieval.expected;
}

/// Some archives do not say beforehand how much there is.
bool wasHeld(const Retrieval &retrieval)
{
    const RetrieveProgress &now = retrieval.result.progress;
    return retrieval.held > 0 && retrieval.held >= qMax(retrieval.expected, now.completed + now.warned);
}

QString refusal(quint16 status, const QString &comment)
{
    const QString text =
        Text::tr("%1 (%2)", "meaning of a status (its hexadecimal number)")
            .arg(statusText(status), QString::number(status, 16).toUpper().rightJustified(4, '0'));
    return TransferText::withDetail(text, comment);
}

QString failedText(const RetrieveResult &result)
{
    const int failed = qMax(result.progress.failed, result.failedInstances.size());
    if (failed == 0) {
        return {};
    }
    QString text = Text::tr("%n image(s) not sent or not taken", nullptr, failed);
    if (!result.failedInstances.isEmpty()) {
        QStringList names = result.failedInstances.mid(0, namedFailures);
        if (result.failedInstances.size() > namedFailures) {
            names += QStringLiteral("…");
        }
        text = TransferText::withDetail(text, listed(names));
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
        text = studies == 0 ? sentences(problem, {}) : sentences(problem, text);
    }
    if (answer.isCutOff) {
        text = Sentences::followed(
            text, Text::tr("There may be more: the archive was stopped there. Ask for less."));
    }
    if (answer.unreadable > 0) {
        text = Sentences::followed(
            text, Text::tr("%n answer(s) could not be read.", nullptr, answer.unreadable));
    }
    if (answer.withoutId > 0) {
        text = Sentences::followed(text,
            Text::tr("%n patient(s) without an ID: the archive cannot be asked for their studies.", nullptr,
                answer.withoutId));
    }
    return text;
}

QString titleOf(const QueryRecord &record, RecordLevel level)
{
    const QString accession = record.value(QueryTag::accessionNumber);
    const QString name = personNameForDisplay(record.value(QueryTag::patientName));
    QStringList parts{name.isEmpty() ? record.value(QueryTag::patientId) : name,
        level == RecordLevel::Series ? seriesOf(record) : Text::tr("whole study"),
        record.value(QueryTag::studyDescription), dateForDisplay(record.value(QueryTag::studyDate)),
        accession.isEmpty() ? QString() : Text::tr("No. %1", "accession number").arg(accession)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" – "));
}

QString requestOf(const QVector<Retrieval> &retrievals)
{
    if (retrievals.isEmpty()) {
        return {};
    }
    QString asked = Text::tr("%n study(ies) or series asked for.", nullptr, retrievals.size());
    const int held = int(std::count_if(retrievals.begin(), retrievals.end(), isPartlyHeld));
    if (held == 0) {
        return asked;
    }
    if (held < retrievals.size()) {
        return Sentences::followed(asked,
            Text::tr("The index has images of %n of them already; what is the same stays as it is.", nullptr,
                held));
    }
    const bool isWhole = std::all_of(retrievals.begin(), retrievals.end(), isWhollyHeld);
    return Sentences::followed(asked,
        isWhole ? Text::tr("The index has all images of it already; what is the same stays as it is.")
                : Text::tr("The index has some images of it already; what is the same stays as it is."));
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
    return total > 0 ? Text::tr("%1 of %Ln image(s)", nullptr, total).arg(locale.toString(done)) : QString();
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
    if (!failed.isEmpty()) {
        parts += failed;
    }
    if (retrieval.isGood() && wasHeld(retrieval)) {
        parts += Text::tr("All of it was in the index already");
    } else if (retrieval.isGood() && retrieval.held > 0) {
        parts += Text::tr("%n image(s) of it were in the index already", nullptr, retrieval.held);
    }
    return Sentences::remarks(parts);
}

QString endOf(const Retrieval &retrieval)
{
    QStringList parts{stateOf(retrieval), countOf(retrieval), noticeOf(retrieval)};
    parts.removeAll(QString());
    return TransferText::withDetail(retrieval.title, listed(parts));
}

QString heldOf(int images, int total)
{
    if (images == 0) {
        return {};
    }
    return total > images ? Text::tr("%1 of %2").arg(QLocale().toString(images), QLocale().toString(total))
                          : Text::tr("Yes");
}

} // namespace ArchiveText
