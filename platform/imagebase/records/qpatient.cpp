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
    qDeleteAll(m_studies);
}

void QPatient::clear()
{
    setPk(0);
    clearRow();
    setStudys({});
}

QString QPatient::patientName() const
{
    return textOf(int(Column::PatientName));
}

void QPatient::setStudys(const QList<QStudy *> &studies)
{
    for (QStudy *old : qAsConst(m_studies)) {
        if (!studies.contains(old)) {
            delete old;
        }
    }
    m_studies = studies;
    for (QStudy *own : studies) {
        own->setParent(nullptr);
        own->m_patient = this;
    }
}

bool QPatient::searchStudys()
{
    setStudys({});
    QList<QStudy *> studies;
    const bool good = readChildren(RecordLevel::Study, getPk(), &studies,
        [](qint64 pk, const RecordRow &row) { return new QStudy(pk, row); });
    std::sort(studies.begin(), studies.end(), QStudy::isBefore);
    setStudys(studies);
    return good;
}

bool QPatient::searchPatientInfo()
{
    if (getPk() == 0 && !m_studies.isEmpty()) {
        setPk(m_studies.constFirst()->read_patient_fk().toLongLong());
    }
    return readRow();
}
