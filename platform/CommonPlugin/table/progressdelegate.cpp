#include "progressdelegate.h"

#include <QPainter>

namespace {

constexpr int barHeight = 4;
constexpr int sideMargin = 3;

} // namespace

ProgressDelegate::ProgressDelegate(int shareRole, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_shareRole(shareRole)
{ }

double ProgressDelegate::share(const QModelIndex &index) const
{
    return index.data(m_shareRole).toDouble();
}

QSize ProgressDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, 2 * barHeight);
}

void ProgressDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int faint = 50;
    QStyledItemDelegate::paint(painter, option, index);
    QRect bar = option.rect.adjusted(sideMargin, 0, -sideMargin, -1);
    bar.setTop(bar.bottom() - barHeight + 1);
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    const QColor colour = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    QColor ground = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    ground.setAlpha(faint);
    painter->fillRect(bar, ground);
    bar.setWidth(int(bar.width() * qBound(0.0, share(index), 1.0)));
    painter->fillRect(bar, colour);
}
