#include "thumbnaildelegate.h"

#include "thumbnailmodel.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int margin = 6;
constexpr int pictureSide = 112;
constexpr int textLines = 3;
/// Behind pictures it is dark in every theme, as these are mostly black at their borders.
const QColor backdrop(24, 24, 24);
const QColor onBackdrop(220, 220, 220);

} // namespace

QSize ThumbnailDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex & /*index*/) const
{
    const int lines = option.fontMetrics.lineSpacing() * textLines;
    return {pictureSide + 2 * margin, pictureSide + lines + 3 * margin};
}

void ThumbnailDelegate::paintPicture(QPainter *painter, const QRect &place, const QModelIndex &index) const
{
    painter->fillRect(place, backdrop);
    const auto picture = index.data(ThumbnailModel::PictureRole).value<QImage>();
    if (!picture.isNull()) {
        QRect target(QPoint(), picture.size().scaled(place.size(), Qt::KeepAspectRatio));
        target.moveCenter(place.center());
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(target, picture);
        return;
    }
    const QString letters = index.data(ThumbnailModel::LettersRole).toString();
    painter->setPen(onBackdrop);
    QFont font = painter->font();
    if (!letters.isEmpty()) {
        font.setPointSizeF(font.pointSizeF() * (letters.size() > 4 ? 1.5 : 2));
    }
    painter->setFont(font);
    painter->drawText(place, Qt::AlignCenter, letters.isEmpty() ? tr("Loading…") : letters);
}

void ThumbnailDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    item.text.clear();
    item.showDecorationSelected = true; // the mark fills the whole item, which has no text of its own
    const QWidget *widget = option.widget;
    const QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, widget);

    painter->save();
    const QRect inside = option.rect.adjusted(margin, margin, -margin, -margin);
    paintPicture(painter, QRect(inside.left(), inside.top(), inside.width(), pictureSide), index);
    painter->setFont(option.font);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    QRect line(
        inside.left(), inside.top() + pictureSide + margin, inside.width(), option.fontMetrics.lineSpacing());
    for (const int role :
        {ThumbnailModel::TitleRole, ThumbnailModel::DescriptionRole, ThumbnailModel::CountRole}) {
        const QString text = index.data(role).toString().simplified();
        painter->drawText(line, Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine,
            option.fontMetrics.elidedText(text, Qt::ElideRight, line.width()));
        line.translate(0, option.fontMetrics.lineSpacing());
    }
    painter->restore();
}
