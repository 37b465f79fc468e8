#pragma once

#include <QPixmap>
#include <QString>

/// How much of a study or series the index has, as a text and as a disc. GUI thread.
namespace HoldingMark {

/// @param held images in the index. @param images of the service's; -1 where it does not say
QString text(int held, int images);
QPixmap disc(int held, int images);

} // namespace HoldingMark
