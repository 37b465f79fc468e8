#include "progressdelegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int barSteps = 1000;
constexpr int margin = 2;

} // namespace

ProgressDelegate::ProgressDelegate(int shareRole, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_shareRole(shareRole)
{ }

void ProgressDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QString text = cell.text;
    cell.text.clear();
    cell.state &= ~QStyle::State_Selected; // the bar has the selection's colour
    painter->fillRect(cell.rect, cell.palette.base());
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    QStyleOptionProgressBar bar;
    bar.rect = option.rect.adjusted(margin, margin, -margin, -margin);
    bar.palette = option.palette;
    bar.fontMetrics = option.fontMetrics;
    bar.state = (option.state & ~QStyle::State_Selected) | QStyle::State_Horizontal;
    bar.maximum = barSteps;
    bar.progress = int(index.data(m_shareRole).toDouble() * barSteps);
    bar.text = text;
    bar.textVisible = true;
    bar.textAlignment = Qt::AlignCenter;
    style->drawControl(QStyle::CE_ProgressBar, &bar, painter, cell.widget);
}
