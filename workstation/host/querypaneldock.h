#pragma once

#include <QObject>
#include <QVector>

class PatientQueryForm;
class QAbstractButton;
class QAction;
class QDockWidget;
class QMainWindow;
class QWidget;

/**
 * The query panel at the right of the frame: its dock, the key that opens and closes it, and which of its
 * sections are collapsed, kept per user. The thumbnails take the height that is left. Owned by the frame; GUI
 * thread.
 */
class QueryPanelDock : public QObject
{
    Q_OBJECT

public:
    explicit QueryPanelDock(QMainWindow *frame);

    PatientQueryForm *panel() const { return m_panel; }
    /// The empty body of the thumbnail section, for whoever shows pictures there.
    QWidget *thumbnailBody() const;
    /// "Query Panel": checked while the dock is open.
    QAction *toggleAction() const;

    /// The sections as the user left them; all open at first. (The dock's place is kept with the window's.)
    void restore();
    void save() const;

    static constexpr char dockName[] = "DockPatientQuery";

private:
    QAbstractButton *button(const char *name) const;
    void freeThumbnailHeight();
    void giveTitleBar(bool isFloating);

    PatientQueryForm *const m_panel;
    QDockWidget *const m_dock;
};
