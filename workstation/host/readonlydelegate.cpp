#include "readonlydelegate.h"

#include <QLineEdit>

ReadOnlyDelegate::ReadOnlyDelegate(const QStyledItemDelegate *shown, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_shown(shown)
{ }

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
