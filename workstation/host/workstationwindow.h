#pragma once

#include <QMainWindow>
#include <QVector>

class ActionMenus;
class DropImport;
class EditController;
class ImportCentre;
class ImportReport;
class IndexBanner;
class IndexHealth;
class IndexWatcher;
class LayoutKeeper;
class LiveRefresh;
class PatientManagerMainWindow;
class PictureController;
class QueryPanelDock;
class RecordForm;
class RunningPrograms;
class SearchBar;
class SearchController;
class SelectionStatus;
class ShownPatients;
class StatusPanel;
class TableStage;
class TreeController;

/**
 * The workstation's frame around the patient manager: menus, status bar, dropped files, live rows, and an end
 * that loses nothing. Opens the index that databasePath() names; where that fails a banner says why and the
 * window opens all the same. GUI thread.
 */
class WorkstationWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @param programs knows what launchers have started, and outlives the window; null for its own
    explicit WorkstationWindow(RunningPrograms *programs = nullptr, QWidget *parent = nullptr);
    ~WorkstationWindow() override;

    bool hasIndex() const { return m_hasIndex; }
    PatientManagerMainWindow *library() const { return m_library; }
    ImportCentre *imports() const { return m_imports; }
    LiveRefresh *liveRefresh() const { return m_liveRefresh; }
    IndexWatcher *indexWatcher() const { return m_watcher; }
    TreeController *tree() const { return m_tree; }
    TableStage *stage() const { return m_stage; }
    ShownPatients *shownPatients() const { return m_shown; }
    StatusPanel *statusPanel() const { return m_statusPanel; }
    QueryPanelDock *queryPanel() const { return m_queryPanel; }
    PictureController *pictures() const { return m_pictures; }
    SelectionStatus *selection() const { return m_selection; }
    /// The patient, study, series and image form.
    const QVector<RecordForm *> &forms() const { return m_forms; }

    void restoreLayout();
    /// Keeps the layout for the next start. Nothing of a window that has not restored one, and without an
    /// index nothing that belongs to its tables, their search and the tree: the user's own would be lost.
    void saveLayout() const;
    /// Asks what a user must be asked before another window takes this one's place; nothing may run then.
    bool mayBeReplaced();

signals:
    /// The window has closed: nothing runs and nothing is unsaved.
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void build();
    void connectParts();
    void reportIndex();
    void reportDamage(const QString &detail);
    void connectSearch();
    void connectQueryPanel();
    bool mayClose();
    bool mayStop(const QString &question);
    void closeOnceIdle();
    void importDropped(const QStringList &paths);
    void showResult(const ImportReport &report);
    void showAbout();

    RunningPrograms *const m_programs;
    PatientManagerMainWindow *const m_library;
    const bool m_hasIndex;
    QVector<RecordForm *> m_forms;
    IndexBanner *m_banner = nullptr;
    ImportCentre *m_imports = nullptr;
    IndexWatcher *m_watcher = nullptr;
    IndexHealth *m_health = nullptr;
    LiveRefresh *m_liveRefresh = nullptr;
    EditController *m_edits = nullptr;
    TreeController *m_tree = nullptr;
    TableStage *m_stage = nullptr;
    SearchBar *m_searchBar = nullptr;
    ShownPatients *m_shown = nullptr;
    SearchController *m_search = nullptr;
    LayoutKeeper *m_layout = nullptr;
    QueryPanelDock *m_queryPanel = nullptr;
    PictureController *m_pictures = nullptr;
    SelectionStatus *m_selection = nullptr;
    ActionMenus *m_menus = nullptr;
    StatusPanel *m_statusPanel = nullptr;
    bool m_isLayoutKept = false;
    bool m_closing = false;
};
