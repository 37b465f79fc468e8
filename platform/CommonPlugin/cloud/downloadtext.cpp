#include "downloadtext.h"

#include "durationtext.h"
#include "transfertext.h"
#include "webfailuretext.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

constexpr qint64 msPerSecond = 1000;

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(DownloadText)
};

QString finished(const DownloadTally &tally)
{
    return tally.refused > 0
        ? Text::tr("Done; %n image(s) kept aside, the index has others in their place or cannot read them",
            nullptr, int(tally.refused))
        : Text::tr("Done");
}

} // namespace

QString DownloadText::ofState(const DownloadTally &tally)
{
    switch (tally.state) {
    case DownloadState::Waiting:
        return Text::tr("Waiting");
    case DownloadState::Running:
        return Text::tr("Downloading");
    case DownloadState::Indexing:
        return Text::tr("Being indexed");
    case DownloadState::Retrying:
        return TransferText::withDetail(Text::tr("Trying again soon"), WebFailureText::of(tally.failure));
    case DownloadState::NeedsSession:
        return Text::tr("Waiting for a sign-in");
    case DownloadState::Stopped:
        return Text::tr("Stopped");
    case DownloadState::Failed:
        return TransferText::withDetail(Text::tr("Failed"), WebFailureText::of(tally.failure));
    case DownloadState::Finished:
        return finished(tally);
    }
    return {};
}

QString DownloadText::ofCounts(const DownloadTally &tally)
{
    const QLocale locale;
    return tally.expected < 0
        ? locale.toString(tally.fetched)
        : Text::tr("%1 of %2").arg(locale.toString(tally.fetched), locale.toString(tally.expected));
}

QString DownloadText::ofSpeed(const DownloadTally &tally)
{
    return tally.bytesPerSecond <= 0 ? QString()
                                     : Text::tr("%1/s", "an amount of data in a second")
                                           .arg(QLocale().formattedDataSize(qRound64(tally.bytesPerSecond)));
}

QString DownloadText::ofTimeLeft(const DownloadTally &tally)
{
    return tally.secondsLeft < 0 ? QString() : durationText(tally.secondsLeft * msPerSecond);
}
