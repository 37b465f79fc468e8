#include "thumbnailmaker.h"

#include "frameimage.h"
#include "imagefile.h"
#include "seriesentry.h"
#include "thumbnailstore.h"

#include <QDateTime>
#include <QFileInfo>

namespace {

QImage pictureOf(const PixelFrame &frame, const QSizeF &spacing)
{
    QSizeF shape(frame.columns, frame.rows);
    if (!spacing.isEmpty()) {
        shape.setHeight(shape.height() * spacing.height() / spacing.width());
    }
    const QSize size = shape.scaled(ThumbnailMaker::side, ThumbnailMaker::side, Qt::KeepAspectRatio)
                           .toSize()
                           .expandedTo({1, 1});
    // Near the final size without smoothing first: a mammogram would take a tenth of a second, and a lot of
    // memory.
    const WindowLevel window = FrameImage::defaultWindow(frame);
    return FrameImage::render(FrameImage::reduced(frame, size * 4), window)
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(frame.isColour() ? QImage::Format_RGB32 : QImage::Format_Grayscale8);
}

} // namespace

QString ThumbnailMaker::stampOf(const SeriesEntry &entry, const QFileInfo &file)
{
    return file.exists() ? QStringLiteral("%1 %2 %3 %4")
                               .arg(entry.instanceUid)
                               .arg(file.size())
                               .arg(file.lastModified().toMSecsSinceEpoch())
                               .arg(entry.filePath)
                         : QString();
}

Thumbnail ThumbnailMaker::make(const SeriesEntry &entry, const QFileInfo &file, const ThumbnailStore &store,
    const std::atomic<bool> &stop, bool &decoded)
{
    Thumbnail thumbnail;
    if (stop || entry.filePath.isEmpty()) {
        thumbnail.problem = PixelProblem::CannotOpen;
        return thumbnail;
    }
    thumbnail.picture = store.find(entry.instanceUid, file);
    if (!thumbnail.picture.isNull()) {
        return thumbnail;
    }
    ImageFile image;
    thumbnail.problem = image.open(entry.filePath);
    thumbnail.kind = image.info().kind;
    if (stop || thumbnail.problem != PixelProblem::None) {
        return thumbnail;
    }
    decoded = true;
    PixelFrame frame;
    thumbnail.problem = image.readFrame(image.info().frames / 2, frame);
    if (!stop && thumbnail.problem == PixelProblem::None) {
        thumbnail.picture = pictureOf(frame, image.info().spacing);
    }
    return thumbnail;
}
