#pragma once

#include "objectkind.h"
#include "pixelproblem.h"

#include <QImage>
#include <QString>

#include <atomic>

class QFileInfo;
class ThumbnailStore;
struct SeriesEntry;

/// What a series shows instead of itself: a picture, or what it is and why there is none.
struct Thumbnail
{
    QImage picture;
    ObjectKind kind = ObjectKind::Image;
    PixelProblem problem = PixelProblem::None;
};

/// Makes thumbnails, on any thread.
namespace ThumbnailMaker {

/// Of either side of a picture, in pixels.
inline constexpr int side = 128;

/// Tells the file of a picture, as it is now, from any other; empty where it is not there.
QString stampOf(const SeriesEntry &entry, const QFileInfo &file);

/// @param stop looked at before anything is decoded
/// @param decoded set where a frame was decoded: neither where the store had the picture, nor where there is
/// none
Thumbnail make(const SeriesEntry &entry, const QFileInfo &file, const ThumbnailStore &store,
    const std::atomic<bool> &stop, bool &decoded);

} // namespace ThumbnailMaker
