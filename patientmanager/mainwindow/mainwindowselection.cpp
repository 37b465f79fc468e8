// The selection that the forms and the tree report, and the patient that it stands for.
#include "patientmanagermainwindow.h"

#include "attributes.h"
#include "imageformatform.h"
#include "patientform.h"
#include "qpatient.h"
#include "qseries.h"
#include "qstudy.h"
#include "seriesform.h"
#include "studyform.h"
#include "tableinfoform.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

bool isTable(const QString &name, RecordLevel level)
{
    return name == QLatin1String(recordTableName(level));
}

QList<QStudy *> readStudies(const QList<qlonglong> &keys)
{
    QList<QStudy *> studies;
    for (const qlonglong key : keys) {
        auto *study = new QStudy(key, nullptr);
        study->searchStudyInfo();
        study->searchSeries();
        studies.append(study);
    }
    return studies;
}

/// One study that holds just these series; none for no series.
QList<QStudy *> studyOfSeries(const QList<qlonglong> &keys)
{
    if (keys.isEmpty()) {
        return {};
    }
    QList<QSeries *> series;
    for (const qlonglong key : keys) {
        series.append(new QSeries(key, nullptr));
        series.constLast()->searchSeriesInfo();
        series.constLast()->searchInstance();
    }
    auto *study = new QStudy(nullptr);
    study->setSereis(series);
    study->searchStudyInfo();
    return {study};
}

/// The keys that are selected in a form; none where the form is gone.
template <typename Form>
QList<qlonglong> keysOf(const QPointer<Form> &form)
{
    return form ? form->getSelectList() : QList<qlonglong>();
}

} // namespace

QList<qlonglong> PatientManagerMainWindow::selectedKeys() const
{
    return selectedPks;
}

QString PatientManagerMainWindow::selectedTable() const
{
    return currentTableName;
}

void PatientManagerMainWindow::onSelectTable(QList<qlonglong> pks, QString tableName)
{
    selectedPks = std::move(pks);
    currentTableName = std::move(tableName);
}

void PatientManagerMainWindow::onMutiSelect(QList<qlonglong> pks, QString tableName)
{
    onSelectTable(std::move(pks), std::move(tableName));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link this signature
void PatientManagerMainWindow::onShowTable(QString tableName)
{
    const std::array<std::pair<RecordLevel, QWidget *>, 4> forms{{
        {RecordLevel::Patient, patientForm},
        {RecordLevel::Study, studyForm},
        {RecordLevel::Series, seriesForm},
        {RecordLevel::Image, imagesForm},
    }};
    const auto isOfTable = [&tableName](const auto &form) { return isTable(tableName, form.first); };
    if (std::none_of(forms.begin(), forms.end(), isOfTable)) {
        return;
    }
    if (tableInfoForm) {
        tableInfoForm->show();
    }
    for (const auto &form : forms) {
        if (form.second) {
            form.second->setVisible(isOfTable(form));
        }
    }
}

/// The most specific level wins. A selection of images belongs to the forms' selection of their series.
void PatientManagerMainWindow::getSelectPatientPk()
{
    selectedPks.clear();
    const std::array<std::pair<RecordLevel, QList<qlonglong>>, 3> levels{{
        {RecordLevel::Series, keysOf(seriesForm)},
        {RecordLevel::Study, keysOf(studyForm)},
        {RecordLevel::Patient, keysOf(patientForm)},
    }};
    for (const auto &[level, keys] : levels) {
        if (!keys.isEmpty()) {
            onSelectTable(keys, QLatin1String(recordTableName(level)));
            return;
        }
    }
}

/// The one patient object of the window, filled with what is selected.
void PatientManagerMainWindow::buildPatient(int index)
{
    if (patients.isEmpty()) {
        patients.append(QSharedPointer<QPatient>(new QPatient(nullptr), &QObject::deleteLater));
    }
    QPatient *patient = patients.constFirst().data();
    patient->clear();
    if (isTable(currentTableName, RecordLevel::Patient) && !selectedPks.isEmpty()) {
        patient->setPatientPK(selectedPks.value(index));
        patient->searchStudys();
        patient->searchPatientInfo();
    } else if (isTable(currentTableName, RecordLevel::Study)) {
        patient->setStudys(readStudies(selectedPks));
        patient->searchPatientInfo();
    } else if (isTable(currentTableName, RecordLevel::Series)) {
        patient->setStudys(studyOfSeries(selectedPks));
        patient->searchPatientInfo();
    }
}

QSharedPointer<QPatient> PatientManagerMainWindow::getPatient(int index)
{
    buildPatient(index);
    return getPatientSharePointer();
}

QPatient *PatientManagerMainWindow::getPatient()
{
    return getPatientSharePointer().data();
}

QSharedPointer<QPatient> PatientManagerMainWindow::getPatientSharePointer()
{
    return patients.value(0);
}

void PatientManagerMainWindow::updateSelectPatient()
{
    buildPatient(0);
    emit patientChanged(patients.constFirst().data());
}
