#include "treecontroller.h"

#include "editcontroller.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSettings>
#include <QTreeView>

namespace {

constexpr char openKey[] = "window/patientTree";
/// A refresh that takes longer is felt: it waits for the end of an import, or for the user.
constexpr qint64 quickMs = 100;

bool isPress(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
}

bool isEnter(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const int key = static_cast<const QKeyEvent &>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

} // namespace

TreeController::TreeController(PatientManagerMainWindow *library, EditController *edits, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_edits(edits)
    , m_panel(library->getPatientTreeForm())
    , m_toggle(new QAction(tr("Patient &Tree"), this))
{
    m_toggle->setObjectName(QStringLiteral("actionPatientTree"));
    m_toggle->setCheckable(true);
    m_toggle->setShortcut(Qt::Key_F9);
    connect(m_toggle, &QAction::triggered, this, &TreeController::setOpen);
    connect(m_panel, &PatientTreeForm::inquiryProblem, this, &TreeController::problem);
    guard();
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

void TreeController::setOpen(bool open)
{
    if (open) {
        m_library->showPatientTreeForm();
        adoptDock();
        emit problem(m_panel->problemText());
    } else if (m_dock) {
        m_dock->hide();
        emit problem({});
        emit left();
    }
    m_toggle->setChecked(open);
}

/// The dock may be closed by its own button while it floats.
void TreeController::adoptDock()
{
    if (m_dock) {
        return;
    }
    m_dock = m_library->findChild<QDockWidget *>(QLatin1String(PatientManagerMainWindow::treeDockName));
    connect(m_dock, &QDockWidget::visibilityChanged, this, [this] {
        const bool isOpen = !m_dock->isHidden();
        if (isOpen != m_toggle->isChecked()) {
            m_toggle->setChecked(isOpen);
            if (!isOpen) {
                emit left();
            }
        }
    });
}

void TreeController::refreshQuickly()
{
    if (m_costMs <= quickMs) {
        refresh();
    }
}

void TreeController::refresh()
{
    if (!m_panel || !m_panel->isVisible()) {
        return;
    }
    QElapsedTimer cost;
    cost.start();
    m_panel->reload();
    m_costMs = cost.elapsed();
}

void TreeController::guard()
{
    auto *view = m_panel->findChild<QTreeView *>();
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
    for (const char *name :
        {"AdvancedInquiry", "AdvancedInquiryPatient", "AdvancedInquiryStudy", "AdvancedInquirySeries"}) {
        m_panel->findChild<QAbstractButton *>(QLatin1String(name))->installEventFilter(this);
    }
}

bool TreeController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && m_swallowRelease) {
        m_swallowRelease = false;
        return true;
    }
    return guardsAgainst(watched, event) || QObject::eventFilter(watched, event);
}

/// The question takes the release of the button, so what was asked for is done here.
bool TreeController::guardsAgainst(QObject *watched, QEvent *event)
{
    if ((!isPress(*event) && !isEnter(*event)) || !m_edits->hasUnsavedEdits()) {
        return false;
    }
    const std::function<void()> action = actionOf(watched, event);
    if (!action) {
        return false;
    }
    m_swallowRelease = isPress(*event);
    if (m_edits->mayDropEdits()) {
        action();
    }
    return true;
}

/// What a press or key would do that fills tables; null where it does nothing of the kind.
std::function<void()> TreeController::actionOf(QObject *watched, QEvent *event) const
{
    if (auto *button = qobject_cast<QAbstractButton *>(watched)) {
        const bool presses = isEnter(*event)
            || (isPress(*event) && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton);
        return presses ? [button] { button->click(); } : std::function<void()>();
    }
    auto *view = m_panel->findChild<QTreeView *>();
    QModelIndex index = view->currentIndex();
    if (watched == view->viewport() && isPress(*event)) {
        const QPoint place = static_cast<QMouseEvent *>(event)->pos();
        index = view->indexAt(place);
        // Left of the row stands the branch: opening it fills nothing.
        const bool onBranch = index.column() == 0 && place.x() < view->visualRect(index).left();
        if (onBranch || static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton) {
            return nullptr;
        }
    } else if (watched != view || !isEnter(*event)) {
        return nullptr;
    }
    if (!index.isValid()) {
        return nullptr;
    }
    return [view, row = QPersistentModelIndex(index)] {
        view->setCurrentIndex(row);
        emit view->clicked(row);
    };
}
