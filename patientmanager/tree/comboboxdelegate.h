#pragma once

#include "patientmanager_export.h"

#include <QStringList>
#include <QStyledItemDelegate>

/**
 * Edits a cell by a combo box of fixed words.
 *
 * The editor opens on its first word, whatever is stored, and writes the word that it shows when it is
 * closed; Escape leaves the cell alone. Tab closes it and goes nowhere, since opening the next one would
 * overwrite that.
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

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const QStringList m_words;
};
