#include "holdingmark.h"

#include "cloudstudymodel.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>

namespace {

/// What an index has of a study or series, as a disc.
enum class Share { None, Some, All };

Share shareOf(int held, int images)
{
    return held <= 0 ? Share::None : images >= 0 && held < images ? Share::Some : Share::All;
}

} // namespace

QString HoldingMark::text(int held, int images)
{
    switch (shareOf(held, images)) {
    case Share::None:
        return CloudStudyModel::tr("no");
    case Share::Some:
        return CloudStudyModel::tr("%1 of %2").arg(held).arg(images);
    case Share::All:
        break;
    }
    return images < 0 ? CloudStudyModel::tr("%n image(s)", nullptr, held) : CloudStudyModel::tr("all");
}

QPixmap HoldingMark::disc(int held, int images)
{
    const Share share = shareOf(held, images);
    const QColor colour = QApplication::palette().color(QPalette::Link);
    constexpr int side = 12;
    constexpr int halfTurn = 180 * 16;
    constexpr int quarterTurn = 90 * 16;
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5));
    const QRectF circle(1, 1, side - 2, side - 2);
    painter.setBrush(share == Share::All ? QBrush(colour) : Qt::NoBrush);
    painter.drawEllipse(circle);
    if (share == Share::Some) {
        painter.setBrush(colour);
        painter.drawPie(circle, quarterTurn, halfTurn);
    }
    return pixmap;
}
