#include "windowconnections.h"

#include "imageformatform.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "seriesform.h"
#include "studyform.h"
#include "tableinfoform.h"

#include <type_traits>

namespace {

using Window = PatientManagerMainWindow;

struct Forms
{
    PatientForm *patient;
    StudyForm *study;
    SeriesForm *series;
    ImageformatForm *images;
    PatientTreeForm *tree;
    tableInfoForm *information;
};

template <typename Pointer>
using ClassOf = std::remove_pointer_t<Pointer>;

/// Does the same with each form, in the order given.
template <typename Connect, typename... Form>
void each(const Connect &connect, Form *...forms)
{
    (connect(forms), ...);
}

/// A single row of a table fills the table below it.
void connectCascade(const Forms &forms)
{
    QObject::connect(forms.patient, &PatientForm::selectPatient, forms.study, &StudyForm::onSelectPatient);
    QObject::connect(forms.study, &StudyForm::selectStudy, forms.series, &SeriesForm::onSelectStudy);
    QObject::connect(forms.series, &SeriesForm::selectSeries, forms.images, &ImageformatForm::onSelectSeries);
}

/// The window knows the latest selection.
void connectSelection(Window *window, const Forms &forms)
{
    const auto connect = [window](auto *form) {
        QObject::connect(form, &ClassOf<decltype(form)>::selectPK, window, &Window::onSelectTable);
    };
    each(connect, forms.patient, forms.study, forms.series, forms.images);
}

/// What a deletion has emptied is read again, from the bottom up.
void connectDeletionRefresh(Window *window, const Forms &forms)
{
    const auto connect = [window](auto *form) {
        QObject::connect(window, &Window::deletereflash, form, &ClassOf<decltype(form)>::onDeletereflash);
    };
    each(connect, forms.images, forms.series, forms.study, forms.patient);
}

/// A new basic inquiry empties the dependent tables; the patient table shows the inquiry itself.
void connectInquiry(Window *window, const Forms &forms)
{
    const auto connect = [window](auto *form) {
        QObject::connect(window, &Window::basicInquiyShow, form, &ClassOf<decltype(form)>::onInquiryShow);
    };
    each(connect, forms.images, forms.series, forms.study);
}

void connectHeaders(Window *window, const Forms &forms)
{
    const auto connect = [window](auto *form) {
        QObject::connect(
            window, &Window::updateFieldHeader, form, &ClassOf<decltype(form)>::updateFieldHeader);
    };
    each(connect, forms.patient, forms.study, forms.series, forms.images);
}

void connectMultiSelection(Window *window, const Forms &forms)
{
    const auto connect = [window](auto *form) {
        QObject::connect(form, &ClassOf<decltype(form)>::selectMutiPK, window, &Window::onMutiSelect);
    };
    each(connect, forms.patient, forms.study, forms.series, forms.images);
}

/// Files dropped on a dependent table may bring new patients.
void connectDroppedFiles(const Forms &forms)
{
    const auto connect = [&forms](auto *form) {
        QObject::connect(form, &ClassOf<decltype(form)>::signalLoadFileFinished, forms.patient,
            &PatientForm::on_reflash_enable);
    };
    each(connect, forms.study, forms.series, forms.images);
}

/// The upload states of a patient are those of its studies and series, too.
void connectUploadStates(const Forms &forms)
{
    const auto connect = [&forms](RecordForm *form) {
        QObject::connect(
            forms.patient, &PatientForm::uploadStatesRefreshed, form, &RecordForm::readUploadStates);
    };
    each(connect, forms.study, forms.series);
}

/// What is chosen in the tree is shown in the tables.
void connectTree(Window *window, const Forms &forms)
{
    const auto connectHeader = [&forms](auto *form) {
        QObject::connect(forms.tree, &PatientTreeForm::updateFieldHeader, form,
            &ClassOf<decltype(form)>::updateFieldHeader);
    };
    each(connectHeader, forms.patient, forms.study, forms.series, forms.images);
    QObject::connect(forms.tree, &PatientTreeForm::selectPatientPks, forms.patient, &PatientForm::onPatient);
    QObject::connect(forms.tree, &PatientTreeForm::selectStudyPks, forms.study, &StudyForm::onStudy);
    QObject::connect(forms.tree, &PatientTreeForm::selectSeriesPks, forms.series, &SeriesForm::onSeries);
    QObject::connect(
        forms.tree, &PatientTreeForm::selectInstancesFilter, forms.images, &ImageformatForm::onInstances);
    QObject::connect(forms.tree, &PatientTreeForm::selectMutiPK, window, &Window::onMutiSelect);
    QObject::connect(forms.tree, &PatientTreeForm::selectTable, window, &Window::onShowTable);
    QObject::connect(forms.tree, &PatientTreeForm::tableInfo, forms.information, &tableInfoForm::onTableInfo);
}

} // namespace

void WindowConnections::connectForms(Window *window)
{
    const Forms forms{window->getPatientForm(), window->getStudyForm(), window->getSeriesForm(),
        window->getImagesForm(), window->getPatientTreeForm(), window->getTableInfoForm()};
    connectCascade(forms);
    connectSelection(window, forms);
    connectDeletionRefresh(window, forms);
    connectInquiry(window, forms);
    connectHeaders(window, forms);
    connectMultiSelection(window, forms);
    connectDroppedFiles(forms);
    connectUploadStates(forms);
    connectTree(window, forms);
}
