#pragma once

#include "datepick.h"

#include <QObject>

class PatientManagerMainWindow;
class QAction;
class QMainWindow;
class QMenu;

/**
 * The menu bar of the host: the library's actions, found by object name, and the host's own.
 *
 * An action whose handler the library does not have yet is left out of the menus, and disabled where it
 * stands on the library's toolbar. Owned by the window; GUI thread.
 */
class ActionMenus : public QObject
{
    Q_OBJECT

public:
    /// The host's own actions, each with a place in a menu.
    struct HostActions
    {
        QAction *editCell;
        QAction *patientTree;
        QAction *findPatients;
        QAction *queryPanel;
        QAction *exportAs;
        QAction *queryRetrieve;
        QAction *transfers;
    };
    ActionMenus(QMainWindow *frame, PatientManagerMainWindow *library, const HostActions &actions);

    /// Checks the action of what is listed, if one is about it, without emitting.
    void setShown(const QString &text, DatePick pick);

signals:
    void patientsRequested(DatePick pick);
    /// One table alone, by its name, or all of them (an empty name).
    void tableRequested(const QString &tableName);
    void aboutRequested();
    void importFilesRequested();
    void quitRequested();

private:
    void fillFile(QMenu *menu, const HostActions &actions);
    void fillEdit(QMenu *menu, const HostActions &actions);
    void fillView(QMenu *menu, const HostActions &actions);
    void fillTools(QMenu *menu, const HostActions &actions);
    void fillHelp(QMenu *menu);
    void addTables(QMenu *menu);
    void addPatientFilters(QMenu *menu);
    void place(QMenu *menu, const char *objectName, const QString &text, const QString &shortcut = {});
    bool hasHandler(const QAction *action) const;
    void disableUnavailable();

    PatientManagerMainWindow *const m_library;
    QAction *m_todaysPatients = nullptr;
    QAction *m_allPatients = nullptr;
};
