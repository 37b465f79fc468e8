#include "qstudy.h"

#include "childreader.h"
#include "qpatient.h"
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
    family().replace(this, {});
    QPatient::family().leave(this);
}

RecordFamily<QStudy, QSeries> QStudy::family()
{
    return {&QStudy::m_series, &QSeries::m_study};
}

QString QStudy::getStudyUID() const
{
    return textOf(int(Column::StudyInstanceUID));
}

void QStudy::setSereis(const QList<QSeries *> &series)
{
    family().replace(this, series);
}

bool QStudy::searchStudyInfo()
{
    if (getPk() == 0 && !m_series.isEmpty()) {
        setPk(m_series.constFirst()->known(int(QSeries::Column::study_fk)).toLongLong());
    }
    return readRow();
}

bool QStudy::searchSeries()
{
    QList<QSeries *> series;
    const bool good = readChildren(
        RecordLevel::Series, getPk(), &series,
        [](qint64 pk, const RecordRow &row) { return new QSeries(pk, row); }, QSeries::isBefore);
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
