#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>

#include <functional>

class EditController;
class PatientManagerMainWindow;
class PatientTreeForm;
class QAction;
class QDockWidget;

/**
 * The patient tree in the host: its place in the menu, whether it stands beside the tables, and what it shows
 * while others write to the index.
 *
 * Asks before a click in the tree would drop unsaved edits of a table. Owned by the window; GUI thread.
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

public slots:
    /// The index has changed: shows it where that is quick.
    void refreshQuickly();
    /// Shows what the chosen inquiry finds now, however long that takes.
    void refresh();

signals:
    /// The user has left the tree: the tables stand for themselves again.
    void left();
    /// Why the tree shows nothing; empty once it shows something again.
    void problem(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setOpen(bool open);
    void adoptDock();
    void guard();
    bool guardsAgainst(QObject *watched, QEvent *event);
    std::function<void()> actionOf(QObject *watched, QEvent *event) const;

    PatientManagerMainWindow *const m_library;
    EditController *const m_edits;
    const QPointer<PatientTreeForm> m_panel;
    QAction *const m_toggle;
    QPointer<QDockWidget> m_dock;
    qint64 m_costMs = 0; ///< of the last refresh
    bool m_swallowRelease = false;
};
