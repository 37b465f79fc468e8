#include "launcherbuttons.h"

#include "launchedprogram.h"
#include "launchercentre.h"
#include "patientqueryform.h"
#include "selectionstatus.h"

#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <QToolButton>

namespace {

/// The panel's name of a launcher, which its button and the label below share.
QString partName(LauncherId id)
{
    switch (id) {
    case LauncherId::Joint:
        return QStringLiteral("joint");
    case LauncherId::Compare:
        return QStringLiteral("regist");
    case LauncherId::Vessel:
        return QStringLiteral("vessel");
    case LauncherId::Swi:
        return QStringLiteral("swi");
    case LauncherId::BrainSegment:
        return QStringLiteral("infarction");
    }
    return {};
}

} // namespace

LauncherButtons::LauncherButtons(
    PatientQueryForm *panel, QStatusBar *bar, const SelectionStatus *selection, LauncherCentre *centre)
    : QObject(bar)
    , m_panel(panel)
    , m_running(new QToolButton(bar))
    , m_selection(selection)
    , m_centre(centre)
{
    m_running->setObjectName(QStringLiteral("runningPrograms"));
    m_running->setPopupMode(QToolButton::InstantPopup);
    m_running->setAutoRaise(true);
    m_running->setMenu(new QMenu(m_running));
    bar->addPermanentWidget(m_running);
    const auto start = [centre](LauncherId id) { return [centre, id] { centre->start(id); }; };
    connect(panel, &PatientQueryForm::jointStart, centre, start(LauncherId::Joint));
    connect(panel, &PatientQueryForm::compareStart, centre, start(LauncherId::Compare));
    connect(panel, &PatientQueryForm::vesselStart, centre, start(LauncherId::Vessel));
    connect(panel, &PatientQueryForm::swiStart, centre, start(LauncherId::Swi));
    connect(panel, &PatientQueryForm::brainSegment, centre, start(LauncherId::BrainSegment));
    connect(selection, &SelectionStatus::changed, this, &LauncherButtons::describeButtons);
    connect(centre, &LauncherCentre::runningChanged, this, &LauncherButtons::describeButtons);
    connect(centre, &LauncherCentre::runningChanged, this, &LauncherButtons::listRunning);
    describeButtons();
    describeInertButtons();
    listRunning();
}

void LauncherButtons::describeButtons()
{
    for (const LauncherId id : LauncherSettings::all()) {
        describe(id);
    }
}

/// A running launcher has a bold label; it can be started once more all the same.
void LauncherButtons::describe(LauncherId id)
{
    auto *button =
        m_panel ? m_panel->findChild<QPushButton *>(QLatin1String("pushButton_") + partName(id)) : nullptr;
    auto *label = m_panel ? m_panel->findChild<QLabel *>(QLatin1String("label_") + partName(id)) : nullptr;
    if (!button || !label) {
        return;
    }
    const QString selected = m_selection->current().text();
    const bool runs = m_centre->isRunning(id);
    QString tip =
        selected.isEmpty() ? tr("Opens what is selected; nothing is.") : tr("Opens %1").arg(selected);
    if (m_centre->isPreparing(id)) {
        button->setCursor(Qt::BusyCursor);
        tip += QLatin1Char('\n') + tr("Is being started…");
    } else {
        button->unsetCursor();
    }
    if (runs) {
        tip += QLatin1Char('\n') + tr("Is running");
    }
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    QFont font = label->font();
    font.setBold(runs);
    label->setFont(font);
}

void LauncherButtons::describeInertButtons()
{
    for (const char *name : {"pushButton_swim", "pushButton_ich", "pushButton_flow"}) {
        if (auto *button = m_panel->findChild<QPushButton *>(QLatin1String(name))) {
            button->setToolTip(tr("%1 is not available.").arg(button->accessibleName()));
            button->setEnabled(false);
        }
    }
}

void LauncherButtons::listRunning()
{
    const QVector<LaunchedProgram *> &running = m_centre->running();
    QMenu *menu = m_running->menu();
    menu->clear();
    for (LaunchedProgram *program : running) {
        const QString name = LauncherSettings::caption(program->launcher());
        menu->addAction(tr("Stop %1 (process %2)").arg(name, QString::number(program->processId())), program,
            &LaunchedProgram::stop);
    }
    m_running->setText(running.size() == 1
            ? tr("Running: %1").arg(LauncherSettings::caption(running.constFirst()->launcher()))
            : tr("Running: %1 programs").arg(QLocale().toString(running.size())));
    m_running->setToolTip(tr("Programs that were started here; click to stop one."));
    m_running->setAccessibleName(m_running->text());
    m_running->setVisible(!running.isEmpty());
}
