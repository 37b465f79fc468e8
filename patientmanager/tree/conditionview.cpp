#include "conditionview.h"

#include "conditionmodel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

namespace {

bool isCondition(const QModelIndex &index)
{
    return index.parent().isValid();
}

} // namespace

/// The nearest cell of the current row that has all these flags, in the order on the screen; invalid for
/// none.
QModelIndex ConditionView::cellBeside(int step, Qt::ItemFlags flags) const
{
    const QModelIndex current = currentIndex();
    for (int place = header()->visualIndex(current.column()) + step; place >= 0 && place < header()->count();
         place += step) {
        const QModelIndex cell = current.siblingAtColumn(header()->logicalIndex(place));
        if (!isColumnHidden(cell.column()) && (cell.flags() & flags) == flags) {
            return cell;
        }
    }
    return {};
}

QModelIndex ConditionView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const bool isSideways = action == MoveLeft || action == MoveRight;
    if (!isSideways || !isCondition(currentIndex())) {
        return QTreeView::moveCursor(action, modifiers);
    }
    const bool isBackward = (action == MoveLeft) != isRightToLeft();
    const QModelIndex cell = cellBeside(isBackward ? -1 : 1, Qt::ItemIsEnabled);
    if (cell.isValid()) {
        return cell;
    }
    return isBackward ? currentIndex().parent() : currentIndex();
}

void ConditionView::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // The cell being edited hands on the one that ends it.
    if (!isEnter || state() == EditingState || !edit(currentIndex(), EditKeyPressed, event)) {
        QTreeView::keyPressEvent(event);
    }
}

bool ConditionView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const bool goesToValue =
        trigger == EditKeyPressed && isCondition(index) && !(index.flags() & Qt::ItemIsEditable);
    if (!goesToValue) {
        return QTreeView::edit(index, trigger, event);
    }
    const QModelIndex value = index.siblingAtColumn(ConditionModel::Value);
    setCurrentIndex(value);
    return QTreeView::edit(value, trigger, event);
}

void ConditionView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const bool isNext = hint == QAbstractItemDelegate::EditNextItem;
    const bool isPrevious = hint == QAbstractItemDelegate::EditPreviousItem;
    QTreeView::closeEditor(editor, isNext || isPrevious ? QAbstractItemDelegate::NoHint : hint);
    if (isNext || isPrevious) {
        const QModelIndex cell = cellBeside(isNext ? 1 : -1, Qt::ItemIsEditable);
        if (cell.isValid()) {
            setCurrentIndex(cell);
        }
    }
}

/// The styles' own focus frame is hardly seen in a selected row.
void ConditionView::drawRow(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QTreeView::drawRow(painter, option, index);
    const QModelIndex current = currentIndex();
    if (!hasFocus() || current.siblingAtColumn(0) != index.siblingAtColumn(0)) {
        return;
    }
    const bool isSelected = selectionModel()->isSelected(current);
    painter->save();
    painter->setPen(QPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::Highlight), 2));
    painter->drawRect(visualRect(current).adjusted(1, 1, -1, -1));
    painter->restore();
}
