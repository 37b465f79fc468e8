#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class ImportReport;
class ImportRunner;
class PatientManagerMainWindow;

/**
 * The imports of the host, and the one place that knows of all that run: its own, those that the library
 * started from its folder picker, and those of files dropped on a table. Owned by the window; GUI thread.
 */
class ImportCentre : public QObject
{
    Q_OBJECT

public:
    /// @param library the library's window; the tables below it are asked, too
    ImportCentre(PatientManagerMainWindow *library, QObject *parent);

    /// Imports files and folders in the configured mode; where that is to ask, asks, and imports once
    /// answered.
    void import(const QStringList &paths);
    /// As import(), for a run without anybody to ask: takes the files where they are then.
    void importUnattended(const QStringList &paths);

    bool isRunning() const;
    /// "Importing 120 of 4,000 files", or empty where nothing runs.
    QString activity() const;
    /// Stops everything that runs, within a second; isRunning() tells when.
    void cancelAll();

signals:
    /// One of the host's own imports has ended.
    void ended(const ImportReport &report);
    /// The configuration says that nothing is to be imported.
    void switchedOff();

private:
    void start(const QStringList &paths, int mode);
    QList<ImportRunner *> runners() const;

    QPointer<PatientManagerMainWindow> m_library;
    ImportRunner *const m_runner;
};
