#include "windowwiring.h"

#include "actionmenus.h"
#include "editcontroller.h"
#include "indexwatcher.h"
#include "liverefresh.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "picturecontroller.h"
#include "querydates.h"
#include "querypanelcontroller.h"
#include "querypaneldock.h"
#include "searchcontroller.h"
#include "selectionstatus.h"
#include "shownpatients.h"
#include "statuspanel.h"
#include "tablestage.h"
#include "treecontroller.h"
#include "windowparts.h"

void WindowWiring::connectIndex(const WindowParts &parts)
{
    QObject::connect(parts.watcher, &IndexWatcher::changed, parts.liveRefresh, &LiveRefresh::onIndexChanged);
    QObject::connect(parts.liveRefresh, &LiveRefresh::refreshed, parts.tree, &TreeController::onIndexChanged);
    QObject::connect(parts.edits, &EditController::refreshed, parts.tree, &TreeController::refresh);
    QObject::connect(parts.watcher, &IndexWatcher::counted, parts.status, &StatusPanel::setCounts);
    QObject::connect(parts.watcher, &IndexWatcher::changed, parts.shown, &ShownPatients::onIndexChanged);
    QObject::connect(parts.watcher, &IndexWatcher::counted, parts.search, &SearchController::setCounts);
    QObject::connect(parts.shown, &ShownPatients::outdated, parts.liveRefresh, &LiveRefresh::onIndexChanged);
}

void WindowWiring::connectListing(const WindowParts &parts)
{
    TableStage *stage = parts.stage;
    QObject::connect(parts.tree, &TreeController::left, stage, [stage] { stage->showTable(QString()); });
    QObject::connect(parts.tree, &TreeController::problem, parts.status, &StatusPanel::setTreeProblem);
    QObject::connect(parts.menus, &ActionMenus::tableRequested, stage, &TableStage::showTable);
    QObject::connect(parts.shown, &ShownPatients::listed, stage, &TableStage::showPatients);
    ShownPatients *shown = parts.shown;
    const auto tell = [shown, menus = parts.menus] { menus->setShown(shown->text(), shown->pick()); };
    QObject::connect(shown, &ShownPatients::changed, parts.menus, tell);
    QObject::connect(parts.menus, &ActionMenus::patientsRequested, shown, [shown, tell](DatePick pick) {
        shown->show(QString(), pick);
        tell(); // what was listed before, where the user keeps unsaved edits
    });
}

void WindowWiring::connectQueryPanel(const WindowParts &parts)
{
    PatientQueryForm *panel = parts.queryPanel->panel();
    const auto *controller =
        new QueryPanelController(panel, parts.mainWindow, parts.shown, parts.edits, parts.tree);
    TableStage *stage = parts.stage;
    QObject::connect(
        controller, &QueryPanelController::allTablesWanted, stage, [stage] { stage->showTable(QString()); });
    QObject::connect(controller, &QueryPanelController::told, parts.status, &StatusPanel::setListing);
    QObject::connect(parts.watcher, &IndexWatcher::changed, new QueryDates(panel), &QueryDates::update);
}

/// Behind the stage's connections, which let the tables follow their own selection.
void WindowWiring::connectSelection(const WindowParts &parts)
{
    SelectionStatus *selection = parts.selection;
    QObject::connect(parts.tree, &TreeController::left, selection, &SelectionStatus::leaveTree);
    QObject::connect(parts.shown, &ShownPatients::listed, selection, &SelectionStatus::leaveTree);
    QObject::connect(parts.liveRefresh, &LiveRefresh::refreshed, selection, &SelectionStatus::dropGone);
    QObject::connect(selection, &SelectionStatus::changed, parts.status,
        [selection, status = parts.status] { status->setSelection(selection->current().text()); });
    parts.pictures->setGuard([edits = parts.edits] { return edits->mayDropEdits(); });
    QObject::connect(
        parts.liveRefresh, &LiveRefresh::refreshed, parts.pictures, &PictureController::onIndexChanged);
}
