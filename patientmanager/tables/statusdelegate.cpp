#include "statusdelegate.h"

#include "uploadmark.h"

StatusDelegate::StatusDelegate(QObject *parent)
    : RecordDelegate(ColumnKind::Text, parent)
{ }

void StatusDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    RecordDelegate::initStyleOption(option, index);
    const QIcon mark = uploadMark(index.data(Qt::DisplayRole).toString(), option->palette);
    if (!mark.isNull()) {
        const int side = option->fontMetrics.height();
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->icon = mark;
        option->decorationSize = QSize(side, side);
    }
}
