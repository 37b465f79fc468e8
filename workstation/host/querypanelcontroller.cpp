#include "querypanelcontroller.h"

#include "editcontroller.h"
#include "imageformatform.h"
#include "panelfilter.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "patienttreeform.h"
#include "seriesform.h"
#include "shownpatients.h"
#include "studyform.h"
#include "treecontroller.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QLocale>
#include <QSqlTableModel>

QueryPanelController::QueryPanelController(PatientQueryForm *panel, PatientManagerMainWindow *library,
    ShownPatients *shown, EditController *edits, TreeController *tree)
    : QObject(panel)
    , m_panel(panel)
    , m_library(library)
    , m_shown(shown)
    , m_edits(edits)
    , m_tree(tree)
{
    connect(panel, &PatientQueryForm::searchPatient, this, &QueryPanelController::search);
    connect(panel, &PatientQueryForm::advanceInquiry, this, &QueryPanelController::setAdvanced);
    connect(panel, &PatientQueryForm::loadDir, this,
        [this] { m_library->findChild<QAction *>(QStringLiteral("actionLoadDir"))->trigger(); });
    connect(tree, &TreeController::left, this, [this] {
        if (m_isAdvanced) {
            part<QAbstractButton>("AdvanceInquiry")->click();
        }
    });
    connectKeys();
}

template <typename Widget>
Widget *QueryPanelController::part(const char *name) const
{
    return m_panel->findChild<Widget *>(QLatin1String(name));
}

bool QueryPanelController::isChecked(const char *box) const
{
    return part<QAbstractButton>(box)->isChecked();
}

/// Return searches from every field.
void QueryPanelController::connectKeys()
{
    auto *button = part<QAbstractButton>("search");
    for (const QLineEdit *field : part<QWidget>("QueryItemWidget")->findChildren<QLineEdit *>()) {
        connect(field, &QLineEdit::returnPressed, button, &QAbstractButton::click);
    }
}

void QueryPanelController::search(const QString &filter)
{
    const PanelRows rows{isChecked("NameCheck"), isChecked("PatientIDCheck"), isChecked("InPatientNoCheck"),
        isChecked("OutPatientCheck")};
    const std::optional<QString> condition = PanelFilter::condition(filter, rows);
    if (!condition || !m_edits->mayDropEdits()) {
        return;
    }
    emit allTablesWanted();
    PatientForm *patients = m_library->getPatientForm();
    patients->onSearchPatient(*condition);
    const int found = patients->tableModel()->rowCount();
    emit told(found == 1 ? tr("The query has found 1 patient.")
                         : tr("The query has found %1 patients.").arg(QLocale().toString(found)));
}

void QueryPanelController::setAdvanced(bool on)
{
    if (on == m_isAdvanced) {
        return;
    }
    if (!on) {
        leaveAdvanced();
    } else if (m_edits->mayDropEdits()) {
        enterAdvanced();
    } else {
        part<QAbstractButton>("AdvanceInquiry")->click(); // up again
    }
}

/// The tables are empty until something is chosen in the tree.
void QueryPanelController::enterAdvanced()
{
    m_isAdvanced = true;
    m_simpleText = m_shown->text();
    m_simplePick = m_shown->pick();
    m_simpleFilter = m_library->getPatientForm()->tableModel()->filter();
    m_wasTreeOpen = m_tree->toggleAction()->isChecked();
    m_wereImagesShown = !m_library->getImagesForm()->isHidden();
    m_tree->setOpen(true);
    m_library->getPatientForm()->onInquiryShow();
    m_library->getStudyForm()->onInquiryShow();
    m_library->getSeriesForm()->onInquiryShow();
    m_library->getImagesForm()->onInquiryShow();
    emit m_library->getPatientTreeForm()->deleteThumbView(); // nothing is chosen any more
    emit told(tr("The patient tree fills the tables."));
}

/// The tree stays where it stood before.
void QueryPanelController::leaveAdvanced()
{
    m_isAdvanced = false;
    emit told({});
    if (!m_wasTreeOpen && m_tree->toggleAction()->isChecked()) {
        m_tree->setOpen(false);
    }
    emit allTablesWanted();
    m_library->getImagesForm()->setVisible(m_wereImagesShown);
    if (m_simplePick != DatePick::Other) {
        m_shown->show(m_simpleText, m_simplePick);
    } else if (m_edits->mayDropEdits()) {
        m_library->getPatientForm()->onSearchPatient(m_simpleFilter);
    }
}
