#include "knownfiles.h"

#include "importmarker.h"

#include <QFile>
#include <QVariant>

#include <unistd.h>

namespace {

/// Without a connection nothing is known, and the writer finds out by the UID.
constexpr int openWaitMs = 200;

/// Those that an interrupted deletion is about to take do not count: the writer tells them apart.
bool hasImages(const QSqlDatabase &db)
{
    QSqlQuery query(db);
    return query.exec(
               QStringLiteral("SELECT 1 FROM imageformat WHERE NOT EXISTS (SELECT 1 FROM deletion) LIMIT 1"))
        && query.next();
}

} // namespace

KnownFiles::KnownFiles(const QString &databasePath, ImportMode mode)
    : m_connection(databasePath, openWaitMs)
    , m_mode(mode)
    , m_any(m_connection.isOpen() && hasImages(m_connection.database()))
    , m_find(m_connection.database())
{
    if (m_any) {
        m_find.prepare(QStringLiteral("SELECT FileSize, FileTime, FileInode, IrradiationEventUID, FilePath "
                                      "FROM imageformat WHERE ifnull(SourcePath, FilePath) = ?"));
    }
}

bool KnownFiles::contains(const WalkedFile &file)
{
    if (!m_any) {
        return false;
    }
    m_find.bindValue(0, QFile::decodeName(file.path));
    bool found = false;
    if (m_find.exec() && m_find.next()) {
        FileStamp stamp;
        stamp.size = m_find.value(0).toLongLong();
        stamp.time = m_find.value(1).toLongLong();
        stamp.inode = m_find.value(2).toULongLong();
        const bool copied = m_find.value(3).toString() == QLatin1String(copiedFileMarker);
        // A copy that is gone from the store must be made again.
        const bool inPlace =
            !copied || access(QFile::encodeName(m_find.value(4).toString()).constData(), F_OK) == 0;
        found = stamp == file.stamp && inPlace && (copied || m_mode == ImportMode::Reference);
    }
    m_find.finish();
    return found;
}
