#pragma once

#include "windowparts.h"

#include <QMainWindow>

class ImportReport;
class SessionServices;

/**
 * The workstation's frame around the patient manager: menus, status bar, dropped files, live rows, and an end
 * that loses nothing. Opens the index that databasePath() names; where that fails a banner says why and the
 * window opens all the same. GUI thread.
 */
class WorkstationWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// @param services outlive the window; null for its own
    explicit WorkstationWindow(SessionServices *services = nullptr, QWidget *parent = nullptr);
    ~WorkstationWindow() override;

    bool hasIndex() const { return m_hasIndex; }
    PatientManagerMainWindow *library() const { return m_parts.mainWindow; }
    ImportCentre *imports() const { return m_parts.imports; }
    LiveRefresh *liveRefresh() const { return m_parts.liveRefresh; }
    IndexWatcher *indexWatcher() const { return m_parts.watcher; }
    TreeController *tree() const { return m_parts.tree; }
    TableStage *stage() const { return m_parts.stage; }
    ShownPatients *shownPatients() const { return m_parts.shown; }
    StatusPanel *statusPanel() const { return m_parts.status; }
    QueryPanelDock *queryPanel() const { return m_parts.queryPanel; }
    PictureController *pictures() const { return m_parts.pictures; }
    ExportController *exports() const { return m_parts.exports; }
    CloudController *cloud() const { return m_parts.cloud; }
    SelectionStatus *selection() const { return m_parts.selection; }
    /// The patient, study, series and image form.
    const QVector<RecordForm *> &forms() const { return m_parts.forms; }

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
    void connectParts();
    void guardWork();
    void reportIndex();
    void reportDamage(const QString &detail);
    void closeOnceIdle();
    void chooseFiles();
    void importDropped(const QStringList &paths);
    void showResult(const ImportReport &report);
    void showAbout();

    SessionServices *const m_services;
    WindowParts m_parts;
    bool m_hasIndex = false;
    bool m_isLayoutKept = false;
    bool m_closing = false;
};
