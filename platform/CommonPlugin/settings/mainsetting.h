#pragma once

#include "commonplugin_export.h"

#include <QString>
#include <QVariant>

/**
 * One value of main.ini, in the file that its reader opens: there may be two such files. The main window
 * looks for its import mode from the working directory, everybody else beside the program. A value; GUI
 * thread.
 */
class COMMONPLUGIN_EXPORT MainSetting
{
public:
    static MainSetting importMode();
    static MainSetting deleteMode();
    static MainSetting duplicatePolicy();
    static MainSetting databasePath();
    /// One of the keys of group "dicom".
    static MainSetting dicom(const char *key);

    QString key() const;
    /// Invalid where no file has it.
    QVariant value() const;
    /// Writes where that changes something. @return whether file() holds the value now
    bool write(const QVariant &value) const;
    /// The file that holds the value or would, existing or not.
    QString file() const;

private:
    enum class Reader { MainWindow, Anybody };
    MainSetting(const char *key, Reader reader);
    QString found() const;

    const char *m_key;
    Reader m_reader;
};
