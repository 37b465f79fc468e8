#pragma once

#include "imagebase_export.h"

#include <QSet>
#include <QString>

class QFileInfo;

/**
 * Where the thumbnails of an index lie: in a folder beside it, each under a name that tells its instance and
 * the version of the file that it was made from. A plain value; any thread.
 */
class IMAGEBASE_EXPORT ThumbnailFiles
{
public:
    explicit ThumbnailFiles(const QString &indexPath);

    QString folder() const { return m_folder; }
    /// The thumbnail of an instance, made from the file as it is now.
    QString pathOf(const QString &instanceUid, const QFileInfo &file) const;
    /// The instance of a file of the folder, by its name; null for a file that is no thumbnail.
    static QString instanceOf(const QString &fileName);
    /// Removes the thumbnails of these instances, whatever file they were made from.
    void remove(const QSet<QString> &instanceUids) const;

private:
    /// Folders of a few hundred files each.
    QString folderOf(const QString &instanceUid) const;

    QString m_folder;
};
