#include "querypanelcontroller.h"

#include "editcontroller.h"
#include "imageformatform.h"
#include "panelfilter.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "querypanelparts.h"
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
            part<QAbstractButton>(QueryPanelPart::advanceInquiry)->click();
        }
    });
    connect(shown, &ShownPatients::asked, this, &QueryPanelController::giveWay);
    connect(shown, &ShownPatients::changed, this, [this] {
        if (!m_isAdvanced && m_shown->filter() != m_toldFilter) {
            emit told({});
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
    auto *button = part<QAbstractButton>(QueryPanelPart::search);
    for (const QLineEdit *field : part<QWidget>("QueryItemWidget")->findChildren<QLineEdit *>()) {
        connect(field, &QLineEdit::returnPressed, button, &QAbstractButton::click);
    }
}

void QueryPanelController::search(const QString &filter)
{
    const PanelRows rows{isChecked("NameCheck"), isChecked("PatientIDCheck"),
        isChecked(QueryPanelPart::firstDayCheck), isChecked(QueryPanelPart::lastDayCheck)};
    const std::optional<QString> condition = PanelFilter::condition(filter, rows);
    if (!condition || !m_edits->mayDropEdits()) {
        return;
    }
    emit allTablesWanted();
    m_shown->showCondition(*condition);
    m_toldFilter = *condition;
    const int found = m_shown->count();
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
        part<QAbstractButton>(QueryPanelPart::advanceInquiry)->click(); // up again
    }
}

/// The tables are empty until something is chosen in the tree.
void QueryPanelController::enterAdvanced()
{
    m_isAdvanced = true;
    m_simpleText = m_shown->text();
    m_simplePick = m_shown->pick();
    m_simpleFilter = m_shown->filter();
    m_wasTreeOpen = m_tree->toggleAction()->isChecked();
    m_wereImagesShown = !m_library->getImagesForm()->isHidden();
    m_tree->setOpen(true);
    chooseNothing();
    emit told(tr("The patient tree fills the tables."));
}

void QueryPanelController::leaveAdvanced()
{
    restoreView();
    if (!m_edits->mayDropEdits()) {
        return;
    }
    chooseNothing();
    if (m_simplePick != DatePick::Other) {
        m_shown->show(m_simpleText, m_simplePick);
    } else {
        m_shown->showCondition(m_simpleFilter);
    }
}

/// The user asks for other patients than those of before: the button goes up without bringing those back.
void QueryPanelController::giveWay()
{
    if (m_isAdvanced) {
        m_isAdvanced = false;
        part<QAbstractButton>(QueryPanelPart::advanceInquiry)->click();
        restoreView();
        chooseNothing();
    }
    emit told({});
}

/// The tree stays where it stood before.
void QueryPanelController::restoreView()
{
    m_isAdvanced = false;
    emit told({});
    if (!m_wasTreeOpen && m_tree->toggleAction()->isChecked()) {
        m_tree->setOpen(false);
    }
    emit allTablesWanted();
    m_library->getImagesForm()->setVisible(m_wereImagesShown);
}

/// Empties the tables, and reports that nothing is selected: the pictures and the chosen patient go with it.
void QueryPanelController::chooseNothing()
{
    m_library->getPatientForm()->onInquiryShow();
    m_library->getStudyForm()->onInquiryShow();
    m_library->getSeriesForm()->onInquiryShow();
    m_library->getImagesForm()->onInquiryShow();
    m_library->getPatientForm()->selectList();
}
