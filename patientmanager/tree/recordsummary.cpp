#include "recordsummary.h"

#include "columntext.h"
#include "qpatienttreeitem.h"
#include "qseries.h"
#include "qstudy.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RecordSummary)
};

/// Several values of one attribute are parted by backslashes.
QString listed(const QVariant &value)
{
    return value.toString().replace(QLatin1Char('\\'), QLatin1String(", "));
}

QString joined(QStringList parts)
{
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  \u00b7  ")).simplified();
}

QString imageCount(int images)
{
    return images == 1 ? Text::tr("1 image") : Text::tr("%1 images").arg(images);
}

QString summary(const QStudy &study)
{
    return joined({columnText(ColumnKind::Date, study.property("StudyDate")),
        listed(study.property("ModalitiesInStudy")), study.property("StudyDescription").toString()});
}

QString summary(const QSeries &series)
{
    return joined({series.property("SeriesNumber").toString(), listed(series.property("Modality")),
        series.property("SeriesDescription").toString(),
        imageCount(series.property("NumberOfSeriesRelatedInstances").toInt())});
}

} // namespace

QString recordSummary(const QPatientTreeItem &item)
{
    if (const QStudy *study = item.getStudy()) {
        return summary(*study);
    }
    const QSeries *series = item.getSeries();
    return series ? summary(*series) : QString();
}
