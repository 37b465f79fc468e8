#pragma once

#include "columnkind.h"

#include <QStyledItemDelegate>

/**
 * Shows the values of one kind of column for people, and edits what is stored: the editor of a person name
 * holds the DICOM value, not the text in the cell. Opening and closing an editor changes nothing, and a
 * number stays a number. A value that waits to be submitted is set in bold italics. Owned by its view's form;
 * shared by all columns of its kind.
 */
class RecordDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    RecordDelegate(ColumnKind kind, QObject *parent);

    QString displayText(const QVariant &value, const QLocale &locale) const override;
    QWidget *createEditor(
        QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    ColumnKind m_kind;
};
