#pragma once

#include <QTreeView>

/**
 * The view of an inquiry's conditions, made for the keyboard.
 *
 * Left and Right go from cell to cell in a condition, and open and close groups; F2 and Enter edit the
 * current cell, or the value where that cell cannot be edited. Tab ends the editing of a cell and makes the
 * next one current that can be edited, without opening it: the lists of words overwrite what is stored when
 * they are closed. The current cell is framed. Expects the columns of ConditionModel.
 */
class ConditionView : public QTreeView
{
    Q_OBJECT

public:
    using QTreeView::QTreeView;

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void drawRow(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected slots:
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    QModelIndex cellBeside(int step, Qt::ItemFlags flags) const;
};
