#pragma once

#include <QVector>

class ActionMenus;
class CloudController;
class DeletionController;
class EditController;
class ExportController;
class ImportCentre;
class IndexBanner;
class IndexHealth;
class IndexWatcher;
class LayoutKeeper;
class LiveRefresh;
class PatientManagerMainWindow;
class PictureController;
class QueryPanelDock;
class RecordForm;
class SearchBar;
class SearchController;
class SelectionStatus;
class ShownPatients;
class StatusPanel;
class TableStage;
class TransferController;
class TreeController;
class WindowClosing;

/// The parts of a workstation window, all owned by it. What each is for stands in its header.
struct WindowParts
{
    PatientManagerMainWindow *mainWindow = nullptr;
    /// The patient, study, series and image form.
    QVector<RecordForm *> forms;
    IndexBanner *banner = nullptr;
    ImportCentre *imports = nullptr;
    IndexWatcher *watcher = nullptr;
    IndexHealth *health = nullptr;
    LiveRefresh *liveRefresh = nullptr;
    EditController *edits = nullptr;
    TreeController *tree = nullptr;
    TableStage *stage = nullptr;
    SearchBar *searchBar = nullptr;
    ShownPatients *shown = nullptr;
    SearchController *search = nullptr;
    LayoutKeeper *layout = nullptr;
    QueryPanelDock *queryPanel = nullptr;
    PictureController *pictures = nullptr;
    SelectionStatus *selection = nullptr;
    ExportController *exports = nullptr;
    ActionMenus *menus = nullptr;
    StatusPanel *status = nullptr;
    DeletionController *deletions = nullptr;
    TransferController *transfers = nullptr;
    CloudController *cloud = nullptr;
    WindowClosing *closing = nullptr;
};
