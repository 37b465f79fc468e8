#pragma once

#include <QStyledItemDelegate>

/// Draws what part of an upload is stored as a bar, below the number. Belongs to the column of progress.
class UploadRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
