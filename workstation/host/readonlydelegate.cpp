#include "readonlydelegate.h"

#include <QLineEdit>

ReadOnlyDelegate::ReadOnlyDelegate(const QStyledItemDelegate *shown, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_shown(shown)
{ }

void ReadOnlyDelegate::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    if (m_shown) {
        m_shown->paint(painter, option, index);
    } else {
        QStyledItemDelegate::paint(painter, option, index);
    }
}

QSize ReadOnlyDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return m_shown ? m_shown->sizeHint(option, index) : QStyledItemDelegate::sizeHint(option, index);
}

QString ReadOnlyDelegate::displayText(const QVariant &value, const QLocale &locale) const
{
    return m_shown ? m_shown->displayText(value, locale) : QStyledItemDelegate::displayText(value, locale);
}

QWidget *ReadOnlyDelegate::createEditor(
    QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    Q_UNUSED(option)
    Q_UNUSED(index)
    auto *text = new QLineEdit(parent);
    text->setReadOnly(true);
    text->setFrame(false);
    return text;
}

void ReadOnlyDelegate::setModelData(
    QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    Q_UNUSED(editor)
    Q_UNUSED(model)
    Q_UNUSED(index)
}
