#include "windowbuilder.h"

#include "actionmenus.h"
#include "cloudcontroller.h"
#include "deletioncontroller.h"
#include "editcontroller.h"
#include "exportcontroller.h"
#include "imageformatform.h"
#include "importcentre.h"
#include "indexbanner.h"
#include "indexhealth.h"
#include "indexwatcher.h"
#include "launcherbuttons.h"
#include "launchercentre.h"
#include "layoutkeeper.h"
#include "liverefresh.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "picturecontroller.h"
#include "querypaneldock.h"
#include "receivecontroller.h"
#include "retrievecontroller.h"
#include "rowkeys.h"
#include "searchbar.h"
#include "searchcontroller.h"
#include "selectionshades.h"
#include "selectionstatus.h"
#include "seriesform.h"
#include "sessionservices.h"
#include "shownpatients.h"
#include "statuspanel.h"
#include "studyform.h"
#include "tablestage.h"
#include "transfercontroller.h"
#include "treecontroller.h"
#include "windowclosing.h"
#include "windowparts.h"

#include <QMainWindow>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

void buildFrame(QMainWindow *window, WindowParts &parts)
{
    parts.mainWindow = new PatientManagerMainWindow(window); // opens the index
    parts.forms = {parts.mainWindow->getPatientForm(), parts.mainWindow->getStudyForm(),
        parts.mainWindow->getSeriesForm(), parts.mainWindow->getImagesForm()};
    parts.mainWindow->setWindowFlags(Qt::Widget);
    parts.banner = new IndexBanner(window);
    parts.searchBar = new SearchBar(window);
    auto *centre = new QWidget(window);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(parts.banner);
    column->addWidget(parts.searchBar);
    column->addWidget(parts.mainWindow, 1);
    window->setCentralWidget(centre);
}

void buildParts(QMainWindow *window, SessionServices &services, WindowParts &parts)
{
    parts.imports = new ImportCentre(parts.mainWindow, window);
    parts.watcher = new IndexWatcher(window);
    parts.health = new IndexHealth(window);
    parts.liveRefresh = new LiveRefresh(parts.forms, window);
    parts.edits = new EditController(parts.forms, parts.mainWindow, window);
    new RowKeys(parts.forms, window);
    parts.tree = new TreeController(parts.mainWindow, parts.edits, window);
    parts.stage = new TableStage(parts.mainWindow, parts.forms, parts.edits, window);
    parts.shown = new ShownPatients(parts.forms, parts.edits, window);
    parts.search =
        new SearchController(parts.searchBar, parts.shown, parts.forms.first()->view(), parts.edits, window);
    parts.queryPanel = new QueryPanelDock(window);
    parts.selection = new SelectionStatus(parts.mainWindow, parts.forms, window);
    parts.layout = new LayoutKeeper(window, parts.mainWindow, parts.stage, parts.forms, window);
    parts.exports = new ExportController(parts.selection, window->statusBar(), window);
    auto *retrieve = new RetrieveController(services.retrievals(), parts.watcher, window);
    parts.transfers = new TransferController(window);
    parts.menus = new ActionMenus(window, parts.mainWindow,
        {parts.edits->editAction(), parts.tree->toggleAction(), parts.search->findAction(),
            parts.queryPanel->toggleAction(), parts.exports->action(), retrieve->action(),
            parts.transfers->action()});
    parts.status = new StatusPanel(window->statusBar(), parts.imports);
    QObject::connect(retrieve, &RetrieveController::ended, parts.status, &StatusPanel::setIdleText);
    QObject::connect(parts.transfers, &TransferController::ended, parts.status, &StatusPanel::setIdleText);
    new ReceiveController(services.receiving(), window->statusBar());
    parts.cloud = new CloudController(parts.mainWindow, window->statusBar(), window);
    QObject::connect(parts.cloud, &CloudController::ended, parts.status, &StatusPanel::setIdleText);
    parts.pictures = new PictureController(parts.mainWindow, parts.queryPanel->thumbnailBody(), window);
    parts.deletions = new DeletionController(parts, window);
    new SelectionShades(parts, window);
    parts.closing = new WindowClosing(window, parts.tree, parts.edits);
    new LauncherButtons(parts.queryPanel->panel(), window->statusBar(), parts.selection,
        new LauncherCentre(services.programs(), parts.selection, window));
}

} // namespace

void WindowBuilder::build(QMainWindow *window, SessionServices &services, WindowParts &parts)
{
    buildFrame(window, parts);
    buildParts(window, services, parts);
}
