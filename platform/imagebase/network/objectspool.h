#pragma once

#include "imagebase_export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <memory>

class SpoolFile;

/// Where the objects of a spool come from: each kind has a folder of its own.
enum class SpoolKind : quint8 { Received, Downloaded };

/**
 * The folder beside an index in which received objects wait for their record.
 *
 * Each running program has a folder of its own in it, held by a lock that the system gives back when the
 * program dies: so the next one knows whose objects nobody indexes any more. Names in it are numbers; nothing
 * that a peer says becomes part of a path. create() and hasRoom() are for any thread, the rest for one.
 */
class IMAGEBASE_EXPORT ObjectSpool
{
public:
    static constexpr qint64 usualReserve = 64 << 20; ///< bytes of the disk that are left to the index
    static constexpr int mostDownloadsAside = 1000;
    static constexpr qint64 mostBytesAside = qint64(1) << 30; ///< of downloads

    /// @param synced whether an object is to survive a power cut once it is kept
    explicit ObjectSpool(
        const QString &databasePath, bool synced = true, SpoolKind kind = SpoolKind::Received);
    /// Removes its folders where nothing waits in them.
    ~ObjectSpool();
    ObjectSpool(const ObjectSpool &) = delete;
    ObjectSpool &operator=(const ObjectSpool &) = delete;

    /// Where the spool of an index lies, whether or not it exists.
    static QString folderOf(const QString &databasePath, SpoolKind kind = SpoolKind::Received);

    /// Makes and locks the folder. @return errno, 0 for success
    int open();
    bool isOpen() const { return m_lock >= 0; }
    /// This program's own folder, once it is open. A file that gets its name there when it is whole, with
    /// SpoolFile's suffix for that, is an object of the spool as those of create() are.
    const QString &folder() const { return m_folder; }
    /// A new file that an object is written into. @return null with the reason in error
    std::unique_ptr<SpoolFile> create(int *error);
    /// Whether there is room for this many bytes, and some to spare for the index.
    bool hasRoom(qint64 bytes) const;
    void setReserve(qint64 bytes) { m_reserve = bytes; }

    /// The objects that programs which are gone left behind, now ours; what they had not completed is
    /// removed. Whether a power cut has damaged one is for SpoolFile::isWhole() to say.
    QVector<QByteArray> adopt();
    /// Moves an object to where nobody looks for it but people; one that was downloaded and would be too many
    /// there is removed, as its service has it. @return its new path, empty where it is not there
    QString keepAside(const QByteArray &path);
    QString asideFolder() const;

private:
    int syncFolders() const;
    bool hasPlaceAside(qint64 bytes);
    int lockFolder(const QString &folder) const;
    void leave(const QString &folder, int lock) const;

    struct Adopted
    {
        QString folder;
        int lock;
    };

    const QString m_root;
    const bool m_synced;
    const SpoolKind m_kind;
    qint64 m_reserve;
    QString m_folder;
    int m_lock = -1;
    int m_folderDescriptor = -1;
    bool m_syncsNames = false;
    QVector<Adopted> m_adopted;
    std::atomic<int> m_serial{0};
    int m_placesAside = 0; ///< at least so many more may go there, as far as downloads are bounded
    qint64 m_bytesAside = 0;
};
