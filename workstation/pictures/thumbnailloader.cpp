#include "thumbnailloader.h"

#include "frameimage.h"
#include "imagefile.h"
#include "pixelframe.h"
#include "thumbnailstore.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

constexpr int leastThreads = 2;

QImage scaled(const QImage &image, const QSizeF &spacing)
{
    QSizeF shape(image.size());
    if (!spacing.isEmpty()) {
        shape.setHeight(shape.height() * spacing.height() / spacing.width());
    }
    const QSize size = shape.scaled(ThumbnailLoader::side, ThumbnailLoader::side, Qt::KeepAspectRatio)
                           .toSize()
                           .expandedTo({1, 1});
    // Near the final size without smoothing first: a mammogram would take a tenth of a second.
    const QSize near = size * 4;
    const QImage small = image.width() > near.width() && image.height() > near.height()
        ? image.scaled(near, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        : image;
    return small.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

ThumbnailLoader::ThumbnailLoader(const QString &indexPath, QObject *parent)
    : QObject(parent)
    , m_indexPath(indexPath)
    , m_store(std::make_shared<ThumbnailStore>(indexPath))
    , m_decoded(std::make_shared<std::atomic<int>>(0))
{
    m_pool.setMaxThreadCount(std::max(leastThreads, QThread::idealThreadCount()));
}

ThumbnailLoader::~ThumbnailLoader()
{
    cancel();
    m_pool.waitForDone();
}

void ThumbnailLoader::cancel()
{
    if (m_stop) {
        m_stop->store(true);
        m_stop.reset();
    }
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
    m_pool.start([this, records, stop] { list(records, stop); });
}

/// On a worker thread; `this` lives until the pool is done.
void ThumbnailLoader::list(const RecordKeys &records, const Token &stop)
{
    if (*stop) {
        return;
    }
    const SeriesEntries series = readSeriesEntries(m_indexPath, records, mostSeries);
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
        if (m_made.value(entry.series) == entry.instanceUid && m_made.contains(entry.series)) {
            continue;
        }
        ++m_pending;
        m_pool.start([this, entry, stop] {
            const Thumbnail thumbnail = make(entry, *m_store, *stop, *m_decoded);
            QMetaObject::invokeMethod(
                this, [this, entry, thumbnail, stop] { onMade(entry, thumbnail, stop); },
                Qt::QueuedConnection);
        });
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

void ThumbnailLoader::onMade(const SeriesEntry &entry, const Thumbnail &thumbnail, const Token &stop)
{
    if (*stop) {
        return;
    }
    m_made.insert(entry.series, entry.instanceUid);
    emit loaded(entry.series, thumbnail);
    if (--m_pending == 0) {
        finish();
    }
}

Thumbnail ThumbnailLoader::make(
    const SeriesEntry &entry, ThumbnailStore &store, const std::atomic<bool> &stop, std::atomic<int> &decoded)
{
    Thumbnail thumbnail;
    if (stop || entry.filePath.isEmpty()) {
        thumbnail.problem = PixelProblem::CannotOpen;
        return thumbnail;
    }
    const QFileInfo info(entry.filePath);
    thumbnail.picture = store.find(entry.instanceUid, info);
    if (!thumbnail.picture.isNull()) {
        return thumbnail;
    }
    ImageFile file;
    thumbnail.problem = file.open(entry.filePath);
    thumbnail.kind = file.info().kind;
    if (stop || thumbnail.problem != PixelProblem::None) {
        return thumbnail;
    }
    ++decoded;
    PixelFrame frame;
    thumbnail.problem = file.readFrame(file.info().frames / 2, frame);
    if (stop || thumbnail.problem != PixelProblem::None) {
        return thumbnail;
    }
    thumbnail.picture =
        scaled(FrameImage::render(frame, FrameImage::defaultWindow(frame)), file.info().spacing)
            .convertToFormat(frame.isColour() ? QImage::Format_RGB32 : QImage::Format_Grayscale8);
    store.put(entry.instanceUid, info, thumbnail.picture);
    return thumbnail;
}
