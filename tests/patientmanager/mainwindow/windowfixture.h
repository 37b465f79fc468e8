#pragma once

#include "patientmanagermainwindow.h"
#include "temporaryindex.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <optional>

/**
 * A window over an index of its own, with a folder for configuration and for files to import. The working
 * directory and the base of the configuration lie in that folder until the end.
 */
class WindowFixture
{
public:
    WindowFixture();
    ~WindowFixture();
    WindowFixture(const WindowFixture &) = delete;
    WindowFixture &operator=(const WindowFixture &) = delete;

    /// An absolute path below the fixture's folder.
    QString path(const QString &name) const;
    void writeIni(const QString &name, const QByteArray &text) const;
    /// DICOM files of one new series of a new patient, in a folder of that name; answers the folder.
    QString makeSeries(const QString &folder, int images) const;

    PatientManagerMainWindow &open();
    void closeWindow();
    /// The open window's private connection, by its name, or an empty text.
    QString privateConnection() const;

    TemporaryIndex index;

private:
    QTemporaryDir m_folder;
    QString m_workingDirectory;
    QStringList m_connections;
    std::unique_ptr<PatientManagerMainWindow> m_window;
};

/// A test whose functions each have a fixture of their own, and leave nobody behind who answers for the user.
class WindowTest : public QObject
{
    Q_OBJECT

protected:
    /// Fills the fixture that has just been made.
    virtual void prepare() { }

    std::optional<WindowFixture> fixture;

private slots:
    void initTestCase();
    void init();
    void cleanup();
};

/// The visible top-level widget of a class that has no exported name; null where there is none.
QWidget *visibleWindow(const char *className);

/// The forms of a window, from the patients down.
QVector<QWidget *> recordForms(const PatientManagerMainWindow &window);
