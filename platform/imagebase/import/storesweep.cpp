#include "storesweep.h"

#include "filestore.h"
#include "indexconnection.h"
#include "namedfiles.h"
#include "nativestatement.h"
#include "storemark.h"

#include <QDate>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char removedFolder[] = "/.removed";
constexpr int daysKept = 30;
/// So many files are removed before the lock is given back.
constexpr int filesOfBatch = 200;
constexpr int foldersOfPlace = 3;

/// Files that an import may have put there, links themselves and not what they lead to.
QStringList filesBelow(const QString &store, const std::atomic<bool> &stop)
{
    QStringList files;
    const QDir::Filters entries = QDir::Files | QDir::System | QDir::NoDotAndDotDot;
    QDirIterator walk(store, entries, QDirIterator::Subdirectories);
    while (!stop && walk.hasNext()) {
        const QString path = walk.next();
        if (FileStore::isPlace(path.mid(store.size() + 1))) {
            files.append(path);
        }
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

/// Files whose path no record has: read in this order, a file that comes in between has its record.
/// @return nothing where that cannot be said
std::optional<QStringList> strays(const QSqlDatabase &db, const QString &store, const std::atomic<bool> &stop)
{
    QStringList files = filesBelow(store, stop);
    std::vector<uint> named;
    if (stop || !readHashes(db, &named)) {
        return std::nullopt;
    }
    const auto hasName = [&named](const QString &path) {
        return std::binary_search(named.begin(), named.end(), qHash(path));
    };
    files.erase(std::remove_if(files.begin(), files.end(), hasName), files.end());
    return files;
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

QString patternOf(const QString &path)
{
    return QRegularExpression::escape(QFileInfo(path).fileName());
}

/// Another index beside this one, other than the copies that upgrades have made of it and the databases that
/// the caller names: what those are is not in the file yet while they are being made.
bool isShared(const QString &databasePath, const QStringList &others)
{
    const QFileInfo own(databasePath);
    QStringList names{patternOf(databasePath) + QStringLiteral("(\\.version[0-9]+\\.backup)?")};
    std::transform(others.begin(), others.end(), std::back_inserter(names), patternOf);
    const QRegularExpression family(QRegularExpression::anchoredPattern(
        QStringLiteral("(%1)(-wal|-shm|-journal)?").arg(names.join(QLatin1Char('|')))));
    const QFileInfoList beside = own.absoluteDir().entryInfoList(QDir::Files | QDir::Hidden);
    return std::any_of(beside.begin(), beside.end(), [&family](const QFileInfo &file) {
        return !family.match(file.fileName()).hasMatch() && isIndex(file.filePath());
    });
}

/// Whether the question, with the store's first and last possible path, has an answer; in doubt it has.
bool isAny(const QSqlDatabase &db, const QString &store, const char *where)
{
    const QString first = store + QLatin1Char('/');
    const QString behind = store + QChar('/' + 1);
    NativeStatement copies(db,
        QStringLiteral("SELECT 1 FROM imageformat WHERE IrradiationEventUID = 'copy' AND (%1) LIMIT 1")
            .arg(QLatin1String(where)));
    copies.bind(0, first);
    copies.bind(1, behind);
    return copies.step() != NativeStatement::Step::Done;
}

/// What speaks against the index being the whole truth about the store, whatever the mark says.
StoreKept doubtAbout(
    const QSqlDatabase &db, const QString &databasePath, const QStringList &others, const QString &store)
{
    if (isShared(databasePath, others)) {
        return StoreKept::Shared;
    }
    if (isAny(db, store, "FilePath < ?1 OR FilePath >= ?2")) {
        return StoreKept::Elsewhere;
    }
    return isAny(db, store, "FilePath >= ?1 AND FilePath < ?2") ? StoreKept::No : StoreKept::NoRecords;
}

StoreKept doubtByMark(const std::optional<StoreState> &marked, const StoreState &own)
{
    if (!marked) {
        return StoreKept::NotMarked;
    }
    if (own.identity.isEmpty() || marked->identity != own.identity) {
        return StoreKept::OtherIndex;
    }
    return marked->isUncertain || marked->changes > own.changes ? StoreKept::OlderIndex : StoreKept::No;
}

class Sweeper
{
public:
    Sweeper(const QSqlDatabase &db, QString store)
        : m_db(db)
        , m_store(std::move(store))
        , m_target(m_store + QLatin1String(removedFolder) + QLatin1Char('/')
              + QDate::currentDate().toString(Qt::ISODate))
        , m_named(db)
    { }

    /// Takes away those of these files that have no record while nobody can enter one.
    bool remove(const QStringList &files, StoreSweep *sweep)
    {
        const WriteTransaction lock(m_db);
        if (!lock.isActive()) {
            return false;
        }
        sweep->removedTo = m_target;
        for (const QString &path : files) {
            if (!m_named.contains(path)) {
                (setAside(path) ? sweep->removed : sweep->left).append(path);
                removeEmptied(path);
            }
        }
        return true;
    }

    /// What was set aside long ago goes for good.
    void removeExpired() const
    {
        const QDir removed(m_store + QLatin1String(removedFolder));
        const QDate oldest = QDate::currentDate().addDays(-daysKept);
        for (const QString &name : removed.entryList(QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot)) {
            const QDate date = QDate::fromString(name, Qt::ISODate);
            if (date.isValid() && date < oldest) {
                QDir(removed.filePath(name)).removeRecursively();
            }
        }
        rmdir(QFile::encodeName(removed.path()).constData());
    }

private:
    bool setAside(const QString &path) const
    {
        const QString place = m_target + path.mid(m_store.size());
        QString free = place;
        struct stat status = {};
        for (int i = 2; lstat(QFile::encodeName(free).constData(), &status) == 0; ++i) {
            free = place + QLatin1Char('-') + QString::number(i);
        }
        return QDir().mkpath(QFileInfo(free).path())
            && std::rename(QFile::encodeName(path).constData(), QFile::encodeName(free).constData()) == 0;
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
    const QString m_target;
    NamedFiles m_named;
};

} // namespace

StoreSweep sweepStore(const QString &databasePath, const QStringList &others, const std::atomic<bool> &stop)
{
    StoreSweep sweep;
    const QString store = storeFolder(databasePath);
    const IndexConnection index(databasePath);
    if (!index.isOpen() || !QFileInfo(store).isDir()) {
        return sweep;
    }
    const QSqlDatabase db = index.database();
    const StoreMark mark(store);
    // The mark first: the index is never behind what it says, unless it is an older one.
    const std::optional<StoreState> marked = mark.read();
    const StoreState own = StoreMark::ofIndex(db);
    const std::optional<QStringList> found = strays(db, store, stop);
    const StoreKept doubt = found ? doubtAbout(db, databasePath, others, store) : StoreKept::No;
    if (!found || (found->isEmpty() && doubt != StoreKept::No)) {
        return sweep;
    }
    const StoreKept byMark = doubtByMark(marked, own);
    if (found->isEmpty() && byMark != StoreKept::No) {
        mark.write(own); // every file has its record here: the store is this index's
        return sweep;
    }
    sweep.kept = doubt != StoreKept::No ? doubt : byMark;
    if (sweep.kept != StoreKept::No) {
        sweep.left = *found;
        return sweep;
    }
    Sweeper sweeper(db, store);
    sweeper.removeExpired();
    for (int from = 0; from < found->size() && !stop; from += filesOfBatch) {
        if (!sweeper.remove(found->mid(from, filesOfBatch), &sweep)) {
            sweep.left += found->mid(from);
            break;
        }
    }
    return sweep;
}
