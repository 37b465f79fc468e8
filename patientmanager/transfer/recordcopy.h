#pragma once

#include "attributes.h"
#include "patientmanager_export.h"

#include <QList>
#include <QString>

class DabaseHelper;

/**
 * Copies the image files of records into folders that are named by the records' keys. Says nothing: what
 * cannot be made or copied is left out. Reads Qt's default connection; blocks until it is done.
 *
 * The last part of a path in the index becomes the name of the copy. Nothing else of it does, so that nothing
 * is written outside of the destination, whatever stands in the index.
 */
class PATIENTMANAGER_EXPORT RecordCopy
{
public:
    /// @param destination a folder that exists
    explicit RecordCopy(QString destination);

    /// The files of the records with these keys. Folders that are there are used, files replaced.
    void copy(RecordLevel level, const QList<qlonglong> &keys);

    /// Replaces the target by a copy of the source, in one step. @return true also where both are one path;
    /// false where the source is not there or anything fails
    static bool copyFile(const QString &source, const QString &target);

private:
    void copyPatients(const QList<qlonglong> &keys, const DabaseHelper &records);
    void copyStudies(const QList<qlonglong> &keys, const QString &folder, const DabaseHelper &records);
    void copySeries(const QList<qlonglong> &keys, const QString &folder);
    void copyFiles(RecordLevel level, qlonglong key, const QString &folder);
    static QString makeFolder(const QString &parent, const QString &name);

    const QString m_destination;
};
