#include "uploadrowdelegate.h"

#include "uploadfilesmodel.h"
#include "uploadtext.h"

#include <QApplication>
#include <QPainter>

/// A thin bar below the number: in a bar, a text would stand on two grounds.
void UploadRowDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int barHeight = 4;
    constexpr int wholePercent = 100;
    QStyledItemDelegate::paint(painter, option, index);
    const int percent = UploadText::percentOf(index.data(UploadFilesModel::TallyRole).value<UploadTally>());
    QRect bar = option.rect.adjusted(3, 0, -3, -1);
    bar.setTop(bar.bottom() - barHeight + 1);
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    const QColor colour = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    QColor ground = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    constexpr int faint = 50;
    ground.setAlpha(faint);
    painter->fillRect(bar, ground);
    bar.setWidth(bar.width() * percent / wholePercent);
    painter->fillRect(bar, colour);
}
