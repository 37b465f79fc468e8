#pragma once

#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/**
 * What the workstation writes for one program that it starts: the list of files, and the file that takes the
 * program's complaints. Only the user may look into it.
 *
 * Goes with its object, unless it is kept for a program that goes on; then the next start removes it, once
 * the program has ended. Whoever still needs the folder holds a lock on the file of the complaints: this
 * object, and the program, which got it as its standard error.
 */
class LaunchFolder
{
public:
    LaunchFolder();

    QString errorFile() const { return m_errors.fileName(); }
    /// Writes a UTF-8 text file of these paths, one a line. @return its path, empty where it cannot be
    /// written
    QString writeFileList(const QStringList &files) const;
    /// The last lines of the complaints.
    QString complaints() const;
    /// Empties the file of the complaints where it has become large.
    void trim() const;
    /// Leaves the folder to the program.
    void keep() { m_folder.setAutoRemove(false); }

    /// For the child between fork and exec: holds the folder until the program has ended.
    static void holdByStandardError();
    /// Removes the folders of programs that have ended, and trims those of others.
    static void sweep();

private:
    QTemporaryDir m_folder;
    QFile m_errors; ///< open for its lock
};
