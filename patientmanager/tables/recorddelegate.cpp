#include "recorddelegate.h"

#include "columntext.h"

#include <QLineEdit>
#include <QLocale>
#include <QSqlTableModel>

namespace {

bool isNumeric(ColumnKind kind)
{
    return kind == ColumnKind::Number || kind == ColumnKind::FileTime;
}

QString editText(const QModelIndex &index)
{
    const QVariant value = index.data(Qt::EditRole);
    return value.type() == QVariant::Double
        ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
        : value.toString();
}

/// Invalid where the text is no number; a typed "no value" where it is empty.
QVariant numberFrom(const QString &text)
{
    if (text.isEmpty()) {
        return QVariant(QVariant::LongLong);
    }
    bool good = false;
    const qlonglong integer = text.toLongLong(&good);
    if (good) {
        return integer;
    }
    const double real = text.toDouble(&good);
    return good ? QVariant(real) : QVariant();
}

} // namespace

RecordDelegate::RecordDelegate(ColumnKind kind, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_kind(kind)
{ }

QString RecordDelegate::displayText(const QVariant &value, const QLocale &) const
{
    return columnText(m_kind, value);
}

void RecordDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const auto *model = qobject_cast<const QSqlTableModel *>(index.model());
    if (model && model->isDirty() && model->isDirty(index)) {
        option->font.setBold(true);
        option->font.setItalic(true);
    }
}

QWidget *RecordDelegate::createEditor(
    QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    // The line edit for every type: a spin box would round what it is given.
    auto *editor = new QLineEdit(parent);
    editor->setFrame(false);
    return editor;
}

void RecordDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    if (auto *line = qobject_cast<QLineEdit *>(editor)) {
        line->setText(editText(index));
    }
}

void RecordDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *line = qobject_cast<QLineEdit *>(editor);
    if (!line || line->text() == editText(index)) {
        return;
    }
    const QVariant value = isNumeric(m_kind) ? numberFrom(line->text().trimmed()) : QVariant(line->text());
    if (value.isValid()) {
        model->setData(index, value, Qt::EditRole);
    }
}
