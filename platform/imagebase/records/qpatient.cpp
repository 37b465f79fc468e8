#include "qpatient.h"

#include "childreader.h"
#include "qstudy.h"

QPatient::QPatient(QObject *parent)
    : IndexRecord(RecordLevel::Patient, 0, parent)
{ }

QPatient::QPatient(qint64 pk, const RecordRow &row)
    : IndexRecord(RecordLevel::Patient, pk, row)
{ }

QPatient::~QPatient()
{
    family().replace(this, {});
}

RecordFamily<QPatient, QStudy> QPatient::family()
{
    return {&QPatient::m_studies, &QStudy::m_patient};
}

void QPatient::clear()
{
    setPk(0);
    setStudys({});
}

QString QPatient::patientName() const
{
    return textOf(int(Column::PatientName));
}

void QPatient::setStudys(const QList<QStudy *> &studies)
{
    family().replace(this, studies);
}

bool QPatient::searchStudys()
{
    QList<QStudy *> studies;
    const bool good = readChildren(
        RecordLevel::Study, getPk(), &studies,
        [](qint64 pk, const RecordRow &row) { return new QStudy(pk, row); }, QStudy::isBefore);
    setStudys(studies);
    return good;
}

bool QPatient::searchPatientInfo()
{
    if (getPk() == 0 && !m_studies.isEmpty()) {
        setPk(m_studies.constFirst()->known(int(QStudy::Column::patient_fk)).toLongLong());
    }
    return readRow();
}
