#pragma once

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>

class EditController;
class PatientManagerMainWindow;
class PatientTreeForm;
class QAction;
class QDockWidget;

/**
 * The patient tree in the host: its place in the menu, whether it stands beside the tables, and what it shows
 * while others write to the index.
 *
 * Asks before the tree would drop unsaved edits of a table. Owned by the window; GUI thread.
 */
class TreeController : public QObject
{
    Q_OBJECT

public:
    TreeController(PatientManagerMainWindow *library, EditController *edits, QObject *parent);

    /// "Patient Tree": checked while the dock is open.
    QAction *toggleAction() const { return m_toggle; }
    /// As it was when the user last closed the window; open at first.
    void restore();
    void save() const;
    /// Closes the tree's own windows. @return false where the user keeps one, for its unsaved changes
    bool mayClose() const;

public slots:
    /// Opens or closes the dock, as the user does.
    void setOpen(bool open);
    /// The index has changed: shows it at once where that is quick, else when the changes have come to rest.
    /// A tree that is closed catches up when it is opened.
    void onIndexChanged();
    /// The user wants to see what is there now.
    void refresh();

signals:
    /// The user has left the tree: the tables stand for themselves again.
    void left();
    /// Why the tree shows nothing; empty where that is no matter.
    void problem(const QString &text);

private:
    void watchDock();
    void onClosed();
    void selectListed(const QList<qlonglong> &keys, const QString &table);
    void reload();

    PatientManagerMainWindow *const m_library;
    const QPointer<PatientTreeForm> m_panel;
    QAction *const m_toggle;
    QPointer<QDockWidget> m_dock;
    QTimer m_rest; ///< runs while a slow reload waits for the changes to end
    qint64 m_costMs = 0; ///< of the last reload
    QSet<qlonglong> m_chosenBefore; ///< patients that were selected in the tables when the tree took over
    bool m_isStale = false; ///< the index has changed since the last reload
};
