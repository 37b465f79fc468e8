#include "qseries.h"

#include "childreader.h"
#include "qinstance.h"
#include "qstudy.h"

QSeries::QSeries(qint64 pk, QObject *parent)
    : IndexRecord(RecordLevel::Series, pk, parent)
{ }

QSeries::QSeries(QObject *parent)
    : QSeries(0, parent)
{ }

QSeries::QSeries(qint64 pk, const RecordRow &row)
    : IndexRecord(RecordLevel::Series, pk, row)
{ }

QSeries::~QSeries()
{
    family().replace(this, {});
    QStudy::family().leave(this);
}

RecordFamily<QSeries, QInstance> QSeries::family()
{
    return {&QSeries::m_instances, &QInstance::m_series};
}

QString QSeries::getSeriesUID() const
{
    return textOf(int(Column::SeriesInstanceUID));
}

bool QSeries::searchSeriesInfo()
{
    return readRow();
}

bool QSeries::searchInstance()
{
    QList<QInstance *> instances;
    const bool good = readChildren(
        RecordLevel::Image, getPk(), &instances,
        [](qint64 pk, const RecordRow &row) { return new QInstance(pk, row); }, QInstance::isBefore);
    family().replace(this, instances);
    return good;
}

bool QSeries::isBefore(const QSeries *a, const QSeries *b)
{
    return isBeforeByNumber(a->read_SeriesNumber(), a->getPk(), b->read_SeriesNumber(), b->getPk());
}
