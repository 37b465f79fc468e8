#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

/// Shows a column as another delegate does; its editor lets the text be selected and copied, not changed.
class ReadOnlyDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param shown says what a value reads like; borrowed, may be null
    ReadOnlyDelegate(const QStyledItemDelegate *shown, QObject *parent);

    void paint(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(
        QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    const QPointer<const QStyledItemDelegate> m_shown;
};
