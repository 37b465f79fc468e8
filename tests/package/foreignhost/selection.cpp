#include "checks.h"

#include <patientform.h>
#include <patientmanagermainwindow.h>
#include <qpatient.h>
#include <qstudy.h>
#include <studyform.h>

#include <QSignalSpy>
#include <QSqlQuery>

namespace {

void addRecords()
{
    for (const char *statement :
        {"INSERT INTO patient (pk, PatientName, PatientID) VALUES (71, 'A^One', '1')",
            "INSERT INTO generalstudy (pk, patient_fk, StudyInstanceUID) VALUES (72, 71, '1.1'), (73, 71, "
            "'1.2')"}) {
        Checks::expect(QSqlQuery().exec(QLatin1String(statement)), QLatin1String(statement));
    }
}

} // namespace

void Checks::selection(PatientManagerMainWindow &window)
{
    addRecords();
    const QString studies = QStringLiteral("generalstudy");
    QSignalSpy changed(&window, SIGNAL(patientChanged(QPatient *)));
    QMetaObject::invokeMethod(window.getStudyForm(), "selectMutiPK",
        Q_ARG(QList<qlonglong>, QList<qlonglong>{73}), Q_ARG(QString, studies));
    window.updateSelectPatient();
    expect(changed.size() == 1 && changed[0][0].value<QPatient *>() == window.getPatient(),
        QStringLiteral("the patient of a selection, by signal"));
    const QSharedPointer<QPatient> patient = window.getPatient(0);
    expect(patient == window.getPatientSharePointer() && patient->getPk() == 71
            && patient->getStudys().size() == 1 && patient->getStudys()[0]->getPk() == 73,
        QStringLiteral("the patient of a selection, by call"));
    QMetaObject::invokeMethod(&window, "onShowTable", Q_ARG(QString, studies));
    expect(window.getStudyForm()->isVisible() && !window.getPatientForm()->isVisible(),
        QStringLiteral("one table alone"));
}
