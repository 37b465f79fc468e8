#include "thumbnailloader.h"

#include "thumbnailstore.h"
#include "thumbnailsweep.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

constexpr int leastThreads = 2;

constexpr int sweepMs = 5000;

} // namespace

ThumbnailLoader::ThumbnailLoader(const QString &indexPath, QObject *parent)
    : QObject(parent)
    , m_indexPath(indexPath)
    , m_store(std::make_unique<ThumbnailStore>(indexPath))
{
    m_lister.setMaxThreadCount(1);
    m_chores.setMaxThreadCount(1);
    m_pool.setMaxThreadCount(std::max(leastThreads, QThread::idealThreadCount()));
    m_sweep.setSingleShot(true);
    m_sweep.setInterval(sweepMs);
    connect(&m_sweep, &QTimer::timeout, this, &ThumbnailLoader::sweep);
    m_sweep.start();
}

ThumbnailLoader::~ThumbnailLoader()
{
    cancel();
    m_stopChores = true;
    m_lister.waitForDone();
    m_pool.waitForDone();
    m_chores.waitForDone();
}

void ThumbnailLoader::cancel()
{
    if (m_stop) {
        m_stop->store(true);
        m_stop.reset();
    }
    m_lister.clear();
    m_pool.clear();
    m_pending = 0;
    m_isBusy = false;
}

void ThumbnailLoader::forget()
{
    cancel();
    m_records = {};
    m_made.clear();
}

void ThumbnailLoader::load(const RecordKeys &records)
{
    cancel();
    if (!(records == m_records)) {
        m_made.clear();
    }
    m_records = records;
    m_stop = std::make_shared<std::atomic<bool>>(false);
    const Token stop = m_stop;
    m_isBusy = true;
    m_lister.start([this, records, stop] { list(records, stop); });
    if (!m_sweep.isActive()) {
        m_sweep.start();
    }
}

/// On a worker thread; `this` lives until the pool is done.
void ThumbnailLoader::list(const RecordKeys &records, const Token &stop)
{
    if (*stop) {
        return;
    }
    const SeriesEntries series = readSeriesEntries(m_indexPath, records, mostSeries, *stop);
    QMetaObject::invokeMethod(
        this, [this, series, stop] { onListed(series, stop); }, Qt::QueuedConnection);
}

void ThumbnailLoader::onListed(const SeriesEntries &series, const Token &stop)
{
    if (*stop) {
        return;
    }
    emit listed(series);
    for (const SeriesEntry &entry : series.entries) {
        ++m_pending;
        const QString shown = m_made.value(entry.series);
        m_pool.start([this, entry, shown, stop] { make(entry, shown, stop); });
    }
    if (m_pending == 0) {
        finish();
    }
}

void ThumbnailLoader::finish()
{
    m_isBusy = false;
    emit finished();
}

/// On a worker thread. The picture is told of before it goes to the disk.
void ThumbnailLoader::make(const SeriesEntry &entry, const QString &shown, const Token &stop)
{
    const QFileInfo file(entry.filePath);
    const QString stamp = ThumbnailMaker::stampOf(entry, file);
    if (!stamp.isEmpty() && stamp == shown) {
        QMetaObject::invokeMethod(
            this, [this, stop] { onSame(stop); }, Qt::QueuedConnection);
        return;
    }
    bool isNew = false;
    const Thumbnail thumbnail = ThumbnailMaker::make(entry, file, *m_store, *stop, isNew);
    m_decoded += isNew ? 1 : 0;
    QMetaObject::invokeMethod(
        this,
        [this, series = entry.series, stamp, thumbnail, stop] { onMade(series, stamp, thumbnail, stop); },
        Qt::QueuedConnection);
    if (isNew && !thumbnail.picture.isNull()) {
        m_store->put(entry.instanceUid, file, thumbnail.picture);
        pruneSoon();
    }
}

/// A file that could not be opened is looked at again the next time.
void ThumbnailLoader::onMade(
    qlonglong series, const QString &stamp, const Thumbnail &thumbnail, const Token &stop)
{
    if (*stop) {
        return;
    }
    m_made.insert(series, thumbnail.problem == PixelProblem::CannotOpen ? QString() : stamp);
    emit loaded(series, thumbnail);
    onSame(stop);
}

void ThumbnailLoader::onSame(const Token &stop)
{
    if (!*stop && --m_pending == 0) {
        finish();
    }
}

/// From any thread.
void ThumbnailLoader::pruneSoon()
{
    if (m_store->wantsPruning() && !m_isPruning.exchange(true)) {
        m_chores.start([this] {
            m_store->prune();
            m_isPruning = false;
        });
    }
}

void ThumbnailLoader::sweep()
{
    m_chores.start([this] { sweepThumbnails(*m_store, m_indexPath, m_stopChores); });
}
