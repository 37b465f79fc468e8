#include "querypaneldock.h"

#include "patientqueryform.h"

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QSettings>

namespace {

constexpr int firstWidth = 300;
constexpr char collapsedGroup[] = "window/collapsed/";

/// Each section by its button and its body.
struct Section
{
    const char *button;
    const char *body;
};
constexpr Section thumbnails{"btThumbnailMinimize", "QueryWidget"};
constexpr Section sections[]{
    {"btQueryMinimize", "QueryItemWidget"}, thumbnails, {"btApplicationMinimize", "ApplicationLayoutWidget"}};

} // namespace

QueryPanelDock::QueryPanelDock(QMainWindow *frame)
    : QObject(frame)
    , m_panel(new PatientQueryForm)
    , m_dock(new QDockWidget(tr("Patient Query"), frame))
{
    m_dock->setObjectName(QLatin1String(dockName));
    m_dock->setAccessibleName(m_dock->windowTitle());
    m_dock->setWidget(m_panel);
    m_dock->setTitleBarWidget(new QWidget(m_dock)); // as the panel keeps it while it is docked
    m_panel->setDockWidget(m_dock);
    frame->addDockWidget(Qt::RightDockWidgetArea, m_dock);
    frame->resizeDocks({m_dock}, {firstWidth}, Qt::Horizontal);
    toggleAction()->setObjectName(QStringLiteral("actionQueryPanel"));
    toggleAction()->setText(tr("&Query Panel"));
    toggleAction()->setShortcut(Qt::Key_F8);
    // After the panel's own slot, which holds an open section at the height that it had.
    connect(button(thumbnails.button), &QAbstractButton::clicked, this, &QueryPanelDock::freeThumbnailHeight);
    connect(m_dock, &QDockWidget::topLevelChanged, this, &QueryPanelDock::giveTitleBar);
}

QAction *QueryPanelDock::toggleAction() const
{
    return m_dock->toggleViewAction();
}

QWidget *QueryPanelDock::thumbnailBody() const
{
    return m_panel->findChild<QWidget *>(QLatin1String(thumbnails.body));
}

QAbstractButton *QueryPanelDock::button(const char *name) const
{
    return m_panel->findChild<QAbstractButton *>(QLatin1String(name));
}

void QueryPanelDock::freeThumbnailHeight()
{
    QWidget *body = thumbnailBody();
    if (!body->isHidden()) {
        body->parentWidget()->setMinimumHeight(0);
        body->parentWidget()->setMaximumHeight(QWIDGETSIZE_MAX);
    }
}

/// A layout that is restored makes the dock float without a word to the panel.
void QueryPanelDock::giveTitleBar(bool isFloating)
{
    QWidget *old = m_dock->titleBarWidget();
    if (isFloating && old) {
        m_dock->setTitleBarWidget(nullptr);
        old->deleteLater();
    }
}

void QueryPanelDock::restore()
{
    const QSettings settings;
    for (const Section &section : sections) {
        if (settings.value(QLatin1String(collapsedGroup) + QLatin1String(section.body), false).toBool()) {
            button(section.button)->click();
        }
    }
}

void QueryPanelDock::save() const
{
    QSettings settings;
    for (const Section &section : sections) {
        const QWidget *body = m_panel->findChild<QWidget *>(QLatin1String(section.body));
        settings.setValue(QLatin1String(collapsedGroup) + QLatin1String(section.body), body->isHidden());
    }
}
