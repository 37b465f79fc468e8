#pragma once

#include "cloudclientplugin_export.h"
#include "uploadaccess.h"

#include <QStringList>
#include <QVector>

class UpLoadTask;

/// Makes uploads into the index that databasePath() names. GUI thread; the caller owns what is made.
class CLOUDCLIENTPLUGIN_EXPORT CloudClientAsyncHandler
{
public:
    /// The files of series. @param sopInstanceUIDs, @param seriesUIDs are those of the files where there are
    /// as many as files; where not, each file is asked for its own
    UpLoadTask *newUpLoadTask(const QStringList &seriesUIDs, const QStringList &sopInstanceUIDs,
        const QStringList &filePaths, const UploadAccess &access);
    /// Loose files, as of a folder.
    UpLoadTask *newUpLoadTask(const QStringList &filePaths, const UploadAccess &access);

    /// The uploads of earlier runs of the program that were not brought to their end, and that have no
    /// UpLoadTask yet: to be shown; they go on by themselves.
    QVector<UpLoadTask *> unfinished(const UploadAccess &access);
};
