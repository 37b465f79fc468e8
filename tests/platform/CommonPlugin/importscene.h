#pragma once

#include "temporaryindex.h"

#include <QTemporaryDir>

/**
 * What a test of imports needs: an index, a folder of files to import, and a program's folder of its own with
 * a config beside it. The working directory is the program's folder's parent while the scene lasts.
 */
class ImportScene
{
public:
    ImportScene();
    ~ImportScene();
    ImportScene(const ImportScene &) = delete;
    ImportScene &operator=(const ImportScene &) = delete;

    /// Writes one DICOM image of the one patient into the folder.
    void addImage(int instance) const;
    /// Writes a file that claims to be DICOM and breaks off.
    QString addBrokenImage(int instance) const;
    QString folder() const { return m_files.path(); }
    QString imagePath(int instance) const;
    /// Sets a value of the main.ini that windows and dialogs find.
    void configure(const char *key, int value) const;
    /// main.ini in the config folder of the working directory, which is also above the program.
    QString mainIni() const;

    int imageCount() const;
    /// Holds the index's write lock, so that no import gets on until unlock().
    void lock() const;
    void unlock() const;

    TemporaryIndex index;

private:
    QTemporaryDir m_files;
    QTemporaryDir m_program;
    QString m_workingDirectory;
};
