#pragma once

#include <QStyledItemDelegate>

/// Paints a series as its picture over its text. All tiles are of one size, so that a view with thousands of
/// them need not ask each.
class ThumbnailDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void paintPicture(QPainter *painter, const QRect &place, const QModelIndex &index) const;
};
