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
class LiveRefresh;
class PatientManagerMainWindow;
class RecordForm;
class StatusPanel;
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
    explicit WorkstationWindow(QWidget *parent = nullptr);
    ~WorkstationWindow() override;

    bool hasIndex() const { return m_hasIndex; }
    PatientManagerMainWindow *library() const { return m_library; }
    ImportCentre *imports() const { return m_imports; }
    LiveRefresh *liveRefresh() const { return m_liveRefresh; }
    IndexWatcher *indexWatcher() const { return m_watcher; }
    TreeController *tree() const { return m_tree; }
    StatusPanel *statusPanel() const { return m_statusPanel; }
    /// The patient, study, series and image form.
    const QVector<RecordForm *> &forms() const { return m_forms; }

    /// Lists today's patients, or all; asks first where that would drop edits.
    void showPatients(bool onlyToday);
    /// Shows one table alone by its name, or all four and no panel (an empty name).
    void showTable(const QString &tableName);
    /// Picks the first patient, study and series that there are, so that each table shows rows.
    void selectFirst();

    void restoreLayout();
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
    void arrangeTables();
    void sortImages();
    void rejoinTables();
    bool mayClose();
    void closeOnceIdle();
    void importDropped(const QStringList &paths);
    void showResult(const ImportReport &report);
    void showAbout();

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
    ActionMenus *m_menus = nullptr;
    StatusPanel *m_statusPanel = nullptr;
    bool m_closing = false;
};
