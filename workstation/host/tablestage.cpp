#include "tablestage.h"

#include "editcontroller.h"
#include "imageformatform.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "seriesform.h"
#include "studyform.h"
#include "tableinfoform.h"

#include <QHeaderView>
#include <QSplitter>
#include <QSqlTableModel>

#include <algorithm>

namespace {

/// Information panel, patients, studies, series, images.
const QList<int> firstHeights{80, 250, 130, 170, 330};

} // namespace

TableStage::TableStage(
    PatientManagerMainWindow *library, QVector<RecordForm *> forms, EditController *edits, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_forms(std::move(forms))
    , m_edits(edits)
    , m_splitter(m_library->findChild<QSplitter *>())
    , m_heights(firstHeights)
{
    connect(m_splitter, &QSplitter::splitterMoved, this, &TableStage::noteHeights);
    for (RecordForm *form : m_forms) {
        // Whole rows are selected, so that bold captions would say nothing, and clip.
        form->view()->horizontalHeader()->setHighlightSections(false);
    }
}

void TableStage::arrange()
{
    m_library->getStudyForm()->onFixHeight(true);
    m_library->getImagesForm()->onFixHeight(true);
    m_library->getImagesForm()->show();
    m_splitter->setSizes(m_heights);
}

void TableStage::setHeights(const QList<int> &heights)
{
    if (heights.size() == firstHeights.size()) {
        m_heights = heights;
        m_splitter->setSizes(m_heights);
    }
}

void TableStage::noteHeights()
{
    if (std::none_of(
            m_forms.begin(), m_forms.end(), [](const RecordForm *form) { return form->isHidden(); })) {
        m_heights = m_splitter->sizes();
    }
}

void TableStage::sortImages()
{
    const RecordForm *images = m_forms.last();
    images->view()->sortByColumn(
        images->tableModel()->fieldIndex(QStringLiteral("InstanceNumber")), Qt::AscendingOrder);
}

void TableStage::showTable(const QString &tableName)
{
    if (!tableName.isEmpty()) {
        m_library->onShowTable(tableName);
        m_library->getTableInfoForm()->hide(); // it speaks of what the tree has shown
        return;
    }
    const bool stoodAlone =
        std::any_of(m_forms.begin(), m_forms.end(), [](const RecordForm *form) { return form->isHidden(); });
    m_library->getTableInfoForm()->hide();
    for (RecordForm *form : m_forms) {
        form->show();
        form->reload(); // what came in while it was hidden
    }
    if (stoodAlone) {
        arrange();
        rejoin();
    }
}

void TableStage::showPatients()
{
    if (m_forms.first()->isHidden()) {
        showTable({});
    }
}

/// While one table stood alone the tree filled it: the tables follow the chosen patient again, or nobody.
void TableStage::rejoin()
{
    if (m_edits->hasUnsavedEdits()) {
        return;
    }
    PatientForm *patients = m_library->getPatientForm();
    const QModelIndexList selected = patients->view()->selectedIndexes();
    if (selected.isEmpty()) {
        m_library->getStudyForm()->onSelectPatient(0);
        patients->selectList(); // nothing
    } else {
        patients->selectIndex(selected.constFirst());
    }
}

void TableStage::selectFirst()
{
    for (int level = 0; level < m_forms.size() - 1; ++level) {
        NTableView *view = m_forms[level]->view();
        if (!view->model() || view->model()->rowCount() == 0) {
            return;
        }
        view->selectRow(0);
        emit view->clicked(view->currentIndex());
    }
}
