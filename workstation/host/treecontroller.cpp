#include "treecontroller.h"

#include "attributes.h"
#include "editcontroller.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "seriesform.h"
#include "studyform.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QSettings>

#include <initializer_list>
#include <optional>
#include <utility>

namespace {

constexpr char openKey[] = "window/patientTree";
/// A reload that takes longer is felt.
constexpr qint64 quickMs = 100;
constexpr int restMs = 3000;

} // namespace

TreeController::TreeController(PatientManagerMainWindow *library, EditController *edits, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_panel(library->getPatientTreeForm())
    , m_toggle(new QAction(tr("Patie&nt Tree"), this))
{
    m_toggle->setObjectName(QStringLiteral("actionPatientTree"));
    m_toggle->setCheckable(true);
    m_toggle->setShortcut(Qt::Key_F9);
    m_rest.setSingleShot(true);
    m_rest.setInterval(restMs);
    connect(m_toggle, &QAction::triggered, this, &TreeController::setOpen);
    connect(m_panel, &PatientTreeForm::inquiryProblem, this, &TreeController::problem);
    connect(library, &PatientManagerMainWindow::updateFieldHeader, this, &TreeController::reload);
    connect(&m_rest, &QTimer::timeout, this, &TreeController::reload);
    connect(m_panel, &PatientTreeForm::selectPatientPks, this, &TreeController::selectListed);
    connect(m_panel, &PatientTreeForm::selectStudyPks, this, &TreeController::selectListed);
    connect(m_panel, &PatientTreeForm::selectSeriesPks, this, &TreeController::selectListed);
    connect(m_panel, &PatientTreeForm::selectSeriesPk, this, &TreeController::selectListed);
    m_panel->setGuard([edits] { return edits->mayDropEdits(); });
}

/// Actions take what the tables have selected, hidden ones, too: that must not be another patient's than the
/// one that the tree shows. The parts of the record that was clicked are selected; the tree's buttons, which
/// come without a table, list everything and select nothing.
void TreeController::selectListed(const QList<qlonglong> &keys, const QString &table)
{
    const std::optional<RecordLevel> listed = recordLevelOf(table);
    if (const RecordForm *patients = m_library->getPatientForm()) {
        const QList<qlonglong> chosen = patients->selectedKeys();
        m_chosenBefore.unite(QSet<qlonglong>(chosen.begin(), chosen.end()));
    }
    const std::initializer_list<std::pair<RecordLevel, RecordForm *>> forms{
        {RecordLevel::Patient, m_library->getPatientForm()}, {RecordLevel::Study, m_library->getStudyForm()},
        {RecordLevel::Series, m_library->getSeriesForm()}};
    for (const auto &[level, form] : forms) {
        if (form) {
            form->view()->clearSelection();
            form->selectKeys(level == listed ? QSet<qlonglong>(keys.begin(), keys.end()) : QSet<qlonglong>());
        }
    }
}

void TreeController::restore()
{
    if (QSettings().value(QLatin1String(openKey), true).toBool()) {
        setOpen(true);
    }
}

void TreeController::save() const
{
    QSettings().setValue(QLatin1String(openKey), m_toggle->isChecked());
}

bool TreeController::mayClose() const
{
    return !m_panel || m_panel->closeCompanions();
}

void TreeController::setOpen(bool open)
{
    if (open) {
        m_library->showPatientTreeForm();
        watchDock();
        m_toggle->setChecked(true);
        if (m_isStale) {
            reload();
        }
        emit problem(m_panel->problemText());
    } else if (m_dock) {
        m_dock->hide();
        onClosed();
    }
}

/// The dock may be closed by its own button while it floats.
void TreeController::watchDock()
{
    if (m_dock) {
        return;
    }
    m_dock = m_library->findChild<QDockWidget *>(QLatin1String(PatientManagerMainWindow::treeDockName));
    // Looked at later: a dock that begins or ceases to float is hidden for a moment.
    connect(
        m_dock, &QDockWidget::visibilityChanged, this,
        [this] {
            if (m_dock->isHidden() && m_toggle->isChecked()) {
                onClosed();
            }
        },
        Qt::QueuedConnection);
}

void TreeController::onClosed()
{
    m_toggle->setChecked(false);
    emit problem({});
    const QSet<qlonglong> before = std::exchange(m_chosenBefore, {});
    if (RecordForm *patients = m_library->getPatientForm(); patients && !before.isEmpty()) {
        patients->selectKeys(before);
    }
    emit left();
}

void TreeController::refresh()
{
    m_isStale = true;
    reload();
}

void TreeController::onIndexChanged()
{
    m_isStale = true;
    if (m_costMs <= quickMs) {
        reload();
    } else {
        m_rest.start();
    }
}

void TreeController::reload()
{
    if (!m_panel || !m_panel->isVisible()) {
        m_isStale = true;
        return;
    }
    if (QApplication::mouseButtons() != Qt::NoButton || QApplication::activeModalWidget()) {
        m_rest.start(); // what is under the mouse, or what a question is about, stays there
        return;
    }
    QElapsedTimer cost;
    cost.start();
    m_panel->reload();
    m_costMs = cost.elapsed();
    m_isStale = false;
}
