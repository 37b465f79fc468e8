#pragma once

#include "patientmanager_export.h"

#include <QStringList>
#include <QStyledItemDelegate>

/**
 * Edits a cell by a combo box of fixed words.
 *
 * The editor opens on its first word, whatever is stored, and writes the word that it shows when it is
 * closed; Escape leaves the cell alone. So a view that opens the next cell on Tab overwrites that one, too:
 * ConditionView does not.
 */
class PATIENTMANAGER_EXPORT ComboBoxDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    ComboBoxDelegate(const QStringList &words, QObject *parent);

    QWidget *createEditor(
        QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    void updateEditorGeometry(
        QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    const QStringList m_words;
};
