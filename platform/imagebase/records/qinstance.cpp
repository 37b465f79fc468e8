#include "qinstance.h"

#include "childreader.h"
#include "qseries.h"

QInstance::QInstance(qint64 pk, QObject *parent)
    : IndexRecord(RecordLevel::Image, pk, parent)
{ }

QInstance::QInstance(QObject *parent)
    : QInstance(0, parent)
{ }

QInstance::~QInstance()
{
    QSeries::family().leave(this);
}

QString QInstance::getSOPInstanceUID() const
{
    return textOf(int(Column::SOPInstanceUID));
}

QString QInstance::getFilePath() const
{
    return textOf(int(Column::FilePath));
}

QInstance::QInstance(qint64 pk, const RecordRow &row)
    : IndexRecord(RecordLevel::Image, pk, row)
{ }

bool QInstance::isBefore(const QInstance *a, const QInstance *b)
{
    return isBeforeByNumber(a->read_InstanceNumber(), a->getPk(), b->read_InstanceNumber(), b->getPk());
}
