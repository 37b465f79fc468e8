#include "uploadtext.h"

#include "durationtext.h"
#include "transfertext.h"
#include "webfailuretext.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(UploadText)
};

using State = UploadTally::State;

bool isMoving(const UploadTally &tally)
{
    return tally.state == State::Running && tally.bytesPerSecond > 0;
}

QString ofFinished(const UploadTally &tally)
{
    return tally.failed > 0 ? Text::tr("Finished, with failures") : Text::tr("Finished");
}

} // namespace

QString UploadText::ofState(const UploadTally &tally)
{
    switch (tally.state) {
    case State::Listing:
        return Text::tr("Looking at the files");
    case State::Running:
        return Text::tr("Uploading");
    case State::Retrying:
        return tally.trouble.isNone()
            ? Text::tr("Trying again")
            : Text::tr("Trying again: %1", "why").arg(WebFailureText::of(tally.trouble));
    case State::NeedsSession:
        return Text::tr("Waiting for you to sign in");
    case State::Paused:
        return Text::tr("Paused: another program uploads, or the index cannot be written");
    case State::Finished:
        return ofFinished(tally);
    case State::Cancelled:
        return Text::tr("Cancelled");
    }
    return {};
}

QString UploadText::ofRate(const UploadTally &tally)
{
    return isMoving(tally) ? Text::tr("%1/s", "so many bytes a second")
                                 .arg(QLocale().formattedDataSize(qint64(tally.bytesPerSecond)))
                           : QString();
}

QString UploadText::ofTimeLeft(const UploadTally &tally)
{
    constexpr qint64 millisecondsPerSecond = 1000;
    return isMoving(tally) && tally.secondsLeft >= 0 ? durationText(tally.secondsLeft * millisecondsPerSecond)
                                                     : QString();
}

int UploadText::percentOf(const UploadTally &tally)
{
    constexpr qint64 whole = 100;
    return tally.all > 0 ? int(whole * tally.succeeded / tally.all) : 0;
}

QString UploadText::ofProgress(const UploadTally &tally)
{
    const QLocale locale;
    return Text::tr("%1 of %Ln file(s), %2 of %3", "files, and bytes", tally.all)
        .arg(locale.toString(tally.succeeded), locale.formattedDataSize(tally.bytesDone),
            locale.formattedDataSize(tally.bytesAll));
}

QString UploadText::of(const UploadFault &fault)
{
    QString words = WebFailureText::of(fault.failure);
    switch (fault.kind) {
    case UploadFault::Kind::None:
        return words;
    case UploadFault::Kind::FileUnreadable:
        return TransferText::withDetail(
            Text::tr("The file is gone, empty, or cannot be read"), fault.failure.detail);
    case UploadFault::Kind::NotDicom:
        return Text::tr("No DICOM object of a study");
    case UploadFault::Kind::RecordDeleted:
        return Text::tr("Its record was deleted while it waited");
    case UploadFault::Kind::Refused:
        return fault.reason > 0 ? TransferText::withDetail(
                   Text::tr("Refused by the service"), TransferText::ofStatus(quint16(fault.reason)))
                                : Text::tr("Refused by the service");
    case UploadFault::Kind::Request:
        return words.isEmpty() ? Text::tr("The service did not take it") : words;
    case UploadFault::Kind::Unanswered:
        return Text::tr("The service took it but did not confirm that it has it");
    }
    return words;
}
