#pragma once

#include "dicomheader.h"
#include "imagebase_export.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>

/// The store of an index: a folder beside it, absolute, whether or not it exists.
IMAGEBASE_EXPORT QString storeFolder(const QString &databasePath);

/**
 * The folder beside the index that holds copied files: store/patient/study/series/file.
 *
 * A file is copied under a temporary name into one folder of the store, and renamed to its place by the
 * writer just before its record is committed. A file that is taken gets a second name in the store and loses
 * its first one by the caller once the record is committed: at no moment has it none. Copying is for any
 * thread; the rest for the writer's.
 */
class FileStore
{
public:
    explicit FileStore(const QString &databasePath);
    /// Removes the folders of its temporary files, where they are empty.
    ~FileStore();
    FileStore(const FileStore &) = delete;
    FileStore &operator=(const FileStore &) = delete;

    /// The store's folder, absolute, whether or not it exists.
    QString folder() const { return m_folder; }

    /// Removes what killed imports left under temporary names, and never what a living process writes.
    void sweepTemporaryFiles() const;

    struct Copy
    {
        QByteArray temporaryPath; ///< empty where it failed
        int systemError = 0; ///< errno of a failure; ECANCELED where cancelled was set
    };
    struct Temporary
    {
        QByteArray path;
        int descriptor = -1; ///< open for writing, the caller's to close; negative where it failed
        int systemError = 0; ///< errno of a failure
    };
    /// Makes an empty file under a temporary name. Any thread.
    Temporary makeTemporary();
    /// How much room its disk has. Any thread.
    qint64 bytesFree() const;

    /// Copies a file under a temporary name. Any thread.
    Copy copyIn(const QByteArray &source, const std::atomic<bool> &cancelled);

    /// Whether a path below the store is one that placeFor() and freePlaceFor() make.
    static bool isPlace(const QString &path);
    /// Where the file of this header belongs.
    QString placeFor(const DicomHeader &header) const;
    using IsTaken = std::function<bool(const QString &path)>;
    /// A place for it that no record and no file still to be removed has: the old file stays until its
    /// replacement is committed. What lies there untaken was left by an import that was killed, and is
    /// overwritten.
    QString freePlaceFor(const DicomHeader &header, const IsTaken &isTaken) const;
    /// Renames a temporary file to its place, making the folders. @return errno, 0 for success
    int place(const QByteArray &temporaryPath, const QString &path);
    static void discard(const QByteArray &temporaryPath);
    /// Gives a file a second name at its place, making the folders; copies it where the file system knows no
    /// second names. @return errno, 0 for success
    int take(const QByteArray &source, const QString &path, const std::atomic<bool> &cancelled);
    /// Makes sure that these names of files in the store survive a power cut.
    void syncNames(const QStringList &paths) const;

private:
    QByteArray incomingFolderOf(int number) const;
    int inFolderOf(const QString &path, const std::function<int()> &action);

    QString m_folder;
    QByteArray m_incoming;
    QString m_lastFolder; ///< the folder that place() made last
    std::atomic<int> m_serial{0};
};
