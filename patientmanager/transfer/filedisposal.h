#pragma once

#include "patientmanager_export.h"

#include <QHash>
#include <QMetaType>
#include <QSet>
#include <QSqlDatabase>
#include <QString>
#include <QVector>

/// A file that a deletion was to remove and that is still there.
struct FileLeft
{
    QString path;
    int systemError = 0; ///< errno of the attempt
};
Q_DECLARE_METATYPE(FileLeft)

/**
 * Removes the files of records and the folders that this empties.
 *
 * Files that are copies of ours go, others stay, unless every file is to go. A copy of ours stays, too, where
 * another record names it, where its folder is reached by a link and so may be anybody's, and where it lies
 * in the store of another index. A link is removed itself, never what it leads to; folders only where they
 * are empty, and never the store. Any thread, one at a time.
 */
class PATIENTMANAGER_EXPORT FileDisposal
{
public:
    /// @param store the store's folder, absolute
    /// @param shared copies that other records name
    FileDisposal(QString store, bool everyFile, QSet<QString> shared);

    /// Removes the file of a record where it is to go; one that is not there counts as removed.
    void removeFile(const QString &path, bool isCopy);
    /// Removes the folders that the files of a record have left empty, and where the last of these was a copy
    /// the two above each copy's.
    void removeFolders(bool lastWasCopy);
    /// Tries once more, but for files that a record names by now, which are no longer left over. Where others
    /// write to the index it tries none. @return what is left then
    static QVector<FileLeft> tryAgain(const QSqlDatabase &db, const QVector<FileLeft> &files);

    /// What was to go and is still on the disk: looked up now.
    QVector<FileLeft> left() const;
    qint64 removed() const { return m_removed; }

private:
    bool isToGo(const QString &path, bool isCopy);
    bool isOurs(const QString &path);
    bool isOwnFolder(const QString &folder);
    void removeEmpty(const QSet<QString> &folders) const;

    const QString m_store;
    const bool m_everyFile;
    const QSet<QString> m_shared;
    QHash<QString, bool> m_ownFolders; ///< of the store: whether no link leads there
    QSet<QString> m_touched;
    QSet<QString> m_touchedByCopies;
    QVector<FileLeft> m_failed;
    qint64 m_removed = 0;
};
