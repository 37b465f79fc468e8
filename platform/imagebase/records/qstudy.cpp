#include "qstudy.h"

#include "childreader.h"
#include "qseries.h"

#include <tuple>

QStudy::QStudy(qint64 pk, QObject *parent)
    : IndexRecord(RecordLevel::Study, pk, parent)
{ }

QStudy::QStudy(QObject *parent)
    : QStudy(0, parent)
{ }

QStudy::QStudy(qint64 pk, const RecordRow &row)
    : IndexRecord(RecordLevel::Study, pk, row)
{ }

QStudy::~QStudy()
{
    qDeleteAll(m_series);
}

QString QStudy::getStudyUID() const
{
    return textOf(int(Column::StudyInstanceUID));
}

void QStudy::setSereis(const QList<QSeries *> &series)
{
    for (QSeries *old : qAsConst(m_series)) {
        if (!series.contains(old)) {
            delete old;
        }
    }
    m_series = series;
    for (QSeries *own : series) {
        own->setParent(nullptr);
        own->m_study = this;
    }
}

bool QStudy::searchStudyInfo()
{
    if (getPk() == 0 && !m_series.isEmpty()) {
        setPk(m_series.constFirst()->read_study_fk().toLongLong());
    }
    return readRow();
}

bool QStudy::searchSeries()
{
    setSereis({});
    QList<QSeries *> series;
    const bool good = readChildren(RecordLevel::Series, getPk(), &series,
        [](qint64 pk, const RecordRow &row) { return new QSeries(pk, row); });
    std::sort(series.begin(), series.end(), QSeries::isBefore);
    setSereis(series);
    return good;
}

/// Newest first; dates and times as DICOM writes them order as texts.
bool QStudy::isBefore(const QStudy *a, const QStudy *b)
{
    const auto moment = [](const QStudy *study) {
        return std::make_tuple(
            study->read_StudyDate().toString(), study->read_StudyTime().toString(), -study->getPk());
    };
    return moment(a) > moment(b);
}
