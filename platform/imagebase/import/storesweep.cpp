#include "storesweep.h"

#include "filestore.h"
#include "indexconnection.h"
#include "nativestatement.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <vector>

#include <unistd.h>

namespace {

/// Beside the index: how many images it had ever had at the last sweep.
constexpr char countSuffix[] = ".images";
/// So many files are removed before the lock is given back.
constexpr int filesOfBatch = 200;
constexpr int foldersOfPlace = 3;

/// Files that an import may have put there: of plain names, links themselves and not what they lead to.
QStringList filesBelow(const QString &store, const std::atomic<bool> &stop)
{
    QStringList files;
    const QDir::Filters entries = QDir::Files | QDir::System | QDir::NoDotAndDotDot;
    QDirIterator walk(store, entries, QDirIterator::Subdirectories);
    while (!stop && walk.hasNext()) {
        files.append(walk.next());
    }
    return files;
}

/// The hashes of all paths that records name: two of one hash only keep a file too many.
bool readHashes(const QSqlDatabase &db, std::vector<uint> *hashes)
{
    NativeStatement paths(db, QStringLiteral("SELECT FilePath FROM imageformat"));
    NativeStatement::Step step = paths.step();
    for (; step == NativeStatement::Step::Row; step = paths.step()) {
        hashes->push_back(qHash(paths.text(0)));
    }
    std::sort(hashes->begin(), hashes->end());
    return step == NativeStatement::Step::Done;
}

/// The count that never falls, of images that the index has ever had; -1 where it cannot be read.
qint64 imagesEver(const QSqlDatabase &db)
{
    NativeStatement count(
        db, QStringLiteral("SELECT ifnull(max(seq), 0) FROM sqlite_sequence WHERE name = 'imageformat'"));
    return count.step() == NativeStatement::Step::Row ? count.integer(0) : -1;
}

bool isOlderThanStore(const QString &databasePath, qint64 images)
{
    QFile file(databasePath + QLatin1String(countSuffix));
    return images < 0 || (file.open(QIODevice::ReadOnly) && file.readAll().trimmed().toLongLong() > images);
}

void noteImages(const QString &databasePath, qint64 images)
{
    QSaveFile file(databasePath + QLatin1String(countSuffix));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QByteArray::number(images));
        file.commit();
    }
}

/// In doubt it is one: only what says that it is something else is not.
bool isIndex(const QString &path)
{
    const QByteArray magic("SQLite format 3");
    QFile file(path);
    const bool isLive = QFileInfo::exists(path + QStringLiteral("-wal"));
    if (!isLive && file.open(QIODevice::ReadOnly) && file.read(magic.size()) != magic) {
        return false;
    }
    constexpr int waitMs = 100;
    const ConnectionFailure::Reason reason = IndexConnection(path, waitMs).failure().reason;
    return reason != ConnectionFailure::Reason::Foreign && reason != ConnectionFailure::Reason::NotADatabase;
}

/// Another index beside this one, other than the copies that upgrades have made of it.
bool isShared(const QString &databasePath)
{
    const QFileInfo own(databasePath);
    const QFileInfoList beside = own.absoluteDir().entryInfoList(QDir::Files | QDir::Hidden);
    return std::any_of(beside.begin(), beside.end(), [&own](const QFileInfo &file) {
        return !file.fileName().startsWith(own.fileName()) && isIndex(file.filePath());
    });
}

class Sweeper
{
public:
    Sweeper(const QSqlDatabase &db, QString store)
        : m_db(db)
        , m_store(std::move(store))
        , m_record(db,
              QStringLiteral("SELECT 1 FROM imageformat WHERE FilePath = ?1 AND "
                             "IrradiationEventUID = 'copy' UNION ALL SELECT 1 FROM imageformat "
                             "WHERE ifnull(SourcePath, FilePath) = ?1 LIMIT 1"))
    { }

    /// Removes those of these files that have no record while nobody can enter one.
    bool remove(const QStringList &files, StoreSweep *sweep)
    {
        const WriteTransaction lock(m_db);
        if (!lock.isActive()) {
            return false;
        }
        for (const QString &path : files) {
            if (hasRecord(path)) {
                continue;
            }
            const bool gone = unlink(QFile::encodeName(path).constData()) == 0;
            (gone ? sweep->removed : sweep->left).append(path);
            removeEmptied(path);
        }
        return true;
    }

private:
    bool hasRecord(const QString &path)
    {
        m_record.bind(0, path);
        const bool none = m_record.step() == NativeStatement::Step::Done;
        m_record.reset();
        return !none; // in doubt it has one
    }

    void removeEmptied(QString path) const
    {
        for (int i = 0; i < foldersOfPlace; ++i) {
            path.truncate(path.lastIndexOf(QLatin1Char('/')));
            if (path.size() <= m_store.size() || rmdir(QFile::encodeName(path).constData()) != 0) {
                return;
            }
        }
    }

    const QSqlDatabase m_db;
    const QString m_store;
    NativeStatement m_record;
};

/// Files whose path no record has: read in this order, a file that comes in between has its record.
QStringList strays(const QSqlDatabase &db, const QString &store, const std::atomic<bool> &stop)
{
    QStringList files = filesBelow(store, stop);
    std::vector<uint> named;
    if (files.isEmpty() || stop || !readHashes(db, &named)) {
        return {};
    }
    const auto hasName = [&named](const QString &path) {
        return std::binary_search(named.begin(), named.end(), qHash(path));
    };
    files.erase(std::remove_if(files.begin(), files.end(), hasName), files.end());
    return files;
}

} // namespace

StoreSweep sweepStore(const QString &databasePath, const std::atomic<bool> &stop)
{
    StoreSweep sweep;
    const QString store = storeFolder(databasePath);
    const IndexConnection index(databasePath);
    if (!index.isOpen() || !QFileInfo(store).isDir()) {
        return sweep;
    }
    const QSqlDatabase db = index.database();
    const qint64 images = imagesEver(db);
    const QStringList found = strays(db, store, stop);
    if (isShared(databasePath) || isOlderThanStore(databasePath, images)) {
        sweep.left = found;
        return sweep;
    }
    Sweeper sweeper(db, store);
    for (int from = 0; from < found.size() && !stop; from += filesOfBatch) {
        if (!sweeper.remove(found.mid(from, filesOfBatch), &sweep)) {
            sweep.left += found.mid(from);
            break;
        }
    }
    noteImages(databasePath, images);
    return sweep;
}
