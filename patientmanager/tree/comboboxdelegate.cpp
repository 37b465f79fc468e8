#include "comboboxdelegate.h"

#include <QComboBox>

ComboBoxDelegate::ComboBoxDelegate(const QStringList &words, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_words(words)
{ }

QWidget *ComboBoxDelegate::createEditor(
    QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    auto *editor = new QComboBox(parent);
    editor->setFrame(false);
    editor->addItems(m_words);
    if (index.isValid()) {
        editor->setAccessibleName(
            index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString());
    }
    return editor;
}

void ComboBoxDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    // The words that are stored convert to 0, the first item.
    static_cast<QComboBox *>(editor)->setCurrentIndex(index.data(Qt::EditRole).toInt());
}

void ComboBoxDelegate::setModelData(
    QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *box = static_cast<QComboBox *>(editor);
    model->setData(index, box->itemText(qMax(0, box->currentIndex())), Qt::EditRole);
}

void ComboBoxDelegate::updateEditorGeometry(
    QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}
