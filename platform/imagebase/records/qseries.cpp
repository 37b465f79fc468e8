#include "qseries.h"

#include "childreader.h"
#include "qinstance.h"

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
    qDeleteAll(m_instances);
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
    qDeleteAll(m_instances);
    m_instances.clear();
    const bool good =
        readChildren(RecordLevel::Image, getPk(), &m_instances, [this](qint64 pk, const RecordRow &row) {
            auto *instance = new QInstance(pk, row);
            instance->m_series = this;
            return instance;
        });
    std::sort(m_instances.begin(), m_instances.end(), QInstance::isBefore);
    return good;
}

bool QSeries::isBefore(const QSeries *a, const QSeries *b)
{
    return isBeforeByNumber(a->read_SeriesNumber(), a->getPk(), b->read_SeriesNumber(), b->getPk());
}
