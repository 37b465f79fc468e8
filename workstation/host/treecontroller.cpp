#include "treecontroller.h"

#include "editcontroller.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QSettings>

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
    m_panel->setGuard([edits] { return edits->mayDropEdits(); });
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
