#include "maintenancetext.h"

#include "importreporttext.h"
#include "longwrite.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSqlError>

namespace {

class Text
{
    Q_DECLARE_TR_FUNCTIONS(MaintenanceText)
};

using End = MaintenanceResult::End;

constexpr int damagesShown = 5;

QString size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes);
}

/// What is the same for every kind of care; empty where it is done.
QString unfinished(const MaintenanceResult &result)
{
    switch (result.end) {
    case End::Done:
        return {};
    case End::Stopped:
        return Text::tr("Stopped. The index is as it was.");
    case End::NoSpace:
        return Text::tr("This needs %1 of free disk space in %2. Nothing was changed.")
            .arg(size(result.neededBytes), result.folder);
    case End::Failed:
        break;
    }
    return connectionFailureText(result.failure);
}

QStringList damages(const MaintenanceResult &result)
{
    QStringList all = result.findings;
    for (const BrokenReference &broken : result.broken) {
        all.append(Text::tr("%1, row %2: its record in %3 is missing")
                       .arg(broken.table)
                       .arg(broken.row)
                       .arg(broken.parentTable));
    }
    return all;
}

} // namespace

namespace MaintenanceText {

QString checked(const MaintenanceResult &result)
{
    if (result.end != End::Done) {
        return unfinished(result);
    }
    const QStringList all = damages(result);
    if (all.isEmpty()) {
        return Text::tr("No damage was found.");
    }
    QString text = Text::tr("The index is damaged. Back it up, start with a new one and import the images "
                            "again; they are not touched.");
    text += QLatin1Char('\n') + all.mid(0, damagesShown).join(QLatin1Char('\n'));
    if (all.size() > damagesShown) {
        text +=
            QLatin1Char('\n') + Text::tr("… and %1 more").arg(QLocale().toString(all.size() - damagesShown));
    }
    return text;
}

QString compacted(const MaintenanceResult &result)
{
    return result.end == End::Done
        ? Text::tr("Compacted: %1 before, %2 now.").arg(size(result.bytesBefore), size(result.bytesAfter))
        : unfinished(result);
}

QString backedUp(const MaintenanceResult &result)
{
    return result.end == End::Done ? Text::tr("The backup is complete: %1.").arg(size(result.bytesAfter))
                                   : unfinished(result);
}

QString refused(const QSqlError &error)
{
    if (LongWrite::isRunning(LongWrite::Work::Compaction)) {
        return Text::tr("The index is being compacted. Try again when that has ended.");
    }
    return LongWrite::isRunning(LongWrite::Work::Deletion)
        ? Text::tr("Records are being deleted. Try again when that has ended.")
        : error.text();
}

} // namespace MaintenanceText
