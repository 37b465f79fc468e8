#include "actionmenus.h"

#include "attributes.h"
#include "patientmanagermainwindow.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

ActionMenus::ActionMenus(QMainWindow *frame, PatientManagerMainWindow *library, const HostActions &actions)
    : QObject(frame)
    , m_library(library)
{
    fillFile(frame->menuBar()->addMenu(tr("&File")), actions);
    fillEdit(frame->menuBar()->addMenu(tr("&Edit")), actions);
    fillView(frame->menuBar()->addMenu(tr("&View")), actions);
    fillTools(frame->menuBar()->addMenu(tr("&Tools")), actions);
    fillHelp(frame->menuBar()->addMenu(tr("&Help")));
    disableUnavailable();
}

void ActionMenus::setShown(const QString &text, DatePick pick)
{
    m_todaysPatients->setChecked(pick == DatePick::ArrivedToday);
    m_allPatients->setChecked(pick == DatePick::AllDates && text.isEmpty());
}

void ActionMenus::fillFile(QMenu *menu, const HostActions &actions)
{
    place(menu, "actionLoadDir", tr("&Import Folder…"), QStringLiteral("Ctrl+O"));
    menu->addAction(tr("Import &Files…"), this, &ActionMenus::importFilesRequested,
        QKeySequence(QStringLiteral("Ctrl+Shift+O")));
    place(menu, "actionSaveDicom", tr("E&xport…"), QStringLiteral("Ctrl+E"));
    menu->addAction(actions.exportAs);
    menu->addSeparator();
    place(menu, "actionSendDicom", tr("&Send…"));
    menu->addAction(actions.queryRetrieve);
    place(menu, "actionUploadCloudData", tr("&Upload"), QStringLiteral("Ctrl+U"));
    place(menu, "actionDownloadCloudData", tr("Do&wnload…"));
    menu->addSeparator();
    place(menu, "actionDatabase", tr("In&dex…"), QStringLiteral("Ctrl+I"));
    menu->addSeparator();
    QAction *quit =
        menu->addAction(tr("&Quit"), this, &ActionMenus::quitRequested, QKeySequence(tr("Ctrl+Q")));
    quit->setMenuRole(QAction::QuitRole);
}

void ActionMenus::fillEdit(QMenu *menu, const HostActions &actions)
{
    menu->addAction(actions.findPatients);
    menu->addSeparator();
    menu->addAction(actions.editCell);
    place(menu, "actionSubmit", tr("&Submit Changes"), QStringLiteral("Ctrl+S"));
    place(menu, "actionRevertall", tr("&Revert Changes"), QStringLiteral("Ctrl+Shift+Z"));
    menu->addSeparator();
    place(menu, "actionPatientInfoEdit", tr("Edit &Patient…"));
    place(menu, "actionAnonymize", tr("&Anonymize…"));
    place(menu, "actionDelete", tr("&Delete…"), QStringLiteral("Del"));
}

void ActionMenus::fillView(QMenu *menu, const HostActions &actions)
{
    place(menu, "actionRefresh", tr("&Refresh"), QStringLiteral("F5"));
    menu->addSeparator();
    addPatientFilters(menu);
    menu->addSeparator();
    addTables(menu);
    menu->addSeparator();
    menu->addAction(actions.patientTree);
    menu->addAction(actions.queryPanel);
    place(menu, "actionSettingField", tr("&Columns…"), QStringLiteral("Ctrl+K"));
}

void ActionMenus::fillTools(QMenu *menu, const HostActions &actions)
{
    menu->addAction(actions.transfers);
    place(menu, "actionCloudBrower", tr("Cloud &Browser"));
    place(menu, "actionTest", tr("&Settings…"), QStringLiteral("Ctrl+,"));
}

void ActionMenus::fillHelp(QMenu *menu)
{
    menu->addAction(tr("&About"), this, &ActionMenus::aboutRequested);
}

void ActionMenus::addPatientFilters(QMenu *menu)
{
    auto *group = new QActionGroup(this);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional); // a search is neither
    const auto add = [this, menu, group](const QString &text, const char *name, DatePick pick) {
        QAction *action = menu->addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, pick] { emit patientsRequested(pick); });
        return action;
    };
    m_todaysPatients = add(tr("&Today's Patients"), "actionTodaysPatients", DatePick::ArrivedToday);
    m_allPatients = add(tr("&All Patients"), "actionAllPatients", DatePick::AllDates);
    m_todaysPatients->setShortcut(QKeySequence(tr("Ctrl+T")));
    m_allPatients->setShortcut(QKeySequence(tr("Ctrl+Shift+A")));
    m_todaysPatients->setChecked(true);
}

void ActionMenus::addTables(QMenu *menu)
{
    const auto add = [this, menu](const QString &text, const QString &shortcut, const QString &table) {
        menu->addAction(
            text, this, [this, table] { emit tableRequested(table); }, QKeySequence(shortcut));
    };
    const auto name = [](RecordLevel level) { return QString::fromLatin1(recordTableName(level)); };
    add(tr("Show All Ta&bles"), QStringLiteral("Alt+0"), QString());
    add(tr("Only &Patients"), QStringLiteral("Alt+1"), name(RecordLevel::Patient));
    add(tr("Only &Studies"), QStringLiteral("Alt+2"), name(RecordLevel::Study));
    add(tr("Only S&eries"), QStringLiteral("Alt+3"), name(RecordLevel::Series));
    add(tr("Only &Images"), QStringLiteral("Alt+4"), name(RecordLevel::Image));
}

/// The library's own texts are terse; a menu has the room to say what an action does.
void ActionMenus::place(QMenu *menu, const char *objectName, const QString &text, const QString &shortcut)
{
    auto *action = m_library->findChild<QAction *>(QLatin1String(objectName), Qt::FindDirectChildrenOnly);
    if (!action || !hasHandler(action)) {
        return;
    }
    action->setText(text);
    if (!shortcut.isEmpty()) {
        action->setShortcut(QKeySequence(shortcut));
    }
    menu->addAction(action);
}

bool ActionMenus::hasHandler(const QAction *action) const
{
    const QByteArray slot = "on_" + action->objectName().toLatin1() + "_triggered()";
    return m_library->metaObject()->indexOfMethod(slot.constData()) >= 0;
}

void ActionMenus::disableUnavailable()
{
    for (QAction *action : m_library->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (action->objectName().startsWith(QLatin1String("action")) && !hasHandler(action)) {
            action->setEnabled(false);
            action->setToolTip(tr("%1 is not available in this version.").arg(action->toolTip()));
        }
    }
}
