#pragma once

#include "columnkind.h"
#include "columnwidths.h"

#include <QTreeView>

#include <array>
#include <functional>

class CaptionHeader;
class IndexRecord;
class QPatientTreeItem;
class QPatientTreeModel;
class RecordDelegate;

/**
 * The view of the patient tree.
 *
 * Shows values and captions as people read them. The rows of studies and series are blank in the columns of
 * the patients, the only ones in sight of a narrow panel: there it paints a line that tells what they are.
 * A width that the user drags a column to is kept. Enter does what a click does. Reads the records behind its
 * model's items, which it borrows.
 */
class PatientTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit PatientTreeView(QWidget *parent = nullptr);

    /// Shows a tree in the place of the one before, which the caller may then drop.
    /// @param patientColumns how many columns the patients have; they come first
    void setTree(QPatientTreeModel *tree, int patientColumns, const QStringList &captions);
    /// Shows the rows down to a level, 0 for the patients alone: quick also for a tree of all records, where
    /// the view's own calls are not.
    void openLevels(int levels);
    /// Opens just those rows, from the top down, that a condition holds for: as quick.
    void openWhere(const std::function<bool(const QPatientTreeItem &)> &isOpen);
    /// The record's row behind an index; null for none.
    QPatientTreeItem *item(const QModelIndex &index) const;
    /// The records of the selected rows, in the order of the selection.
    QList<const IndexRecord *> selectedRecords() const;
    /// Gives every column the width of what is in sight; once more when the view is first shown, since little
    /// is in sight before.
    void fitColumns();
    /// Level and name of each column, which together are said once.
    const QStringList &columnNames() const { return m_columnNames; }
    /// What to say in the place of rows where there are none.
    void setEmptyText(const QString &text);
    /// What the cell says to people, whether or not there is room for it.
    QString shownText(const QModelIndex &index) const;
    /// All rows in open branches; the patients alone where very many branches are open. So does every range
    /// that the user selects.
    void selectAll() override;

protected:
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    int sizeHintForColumn(int column) const override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void drawRow(
        QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool viewportEvent(QEvent *event) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;

private:
    void nameColumns();
    RecordDelegate *delegateOf(int column);
    void installDelegates();
    static int patientRow(QModelIndex row);
    bool hasManyBranches(int first, int last) const;
    void selectPatients(int first, int last, QItemSelectionModel::SelectionFlags command);
    void open(const QModelIndex &parent, const std::function<bool(const QPatientTreeItem &)> &isOpen);
    QRect summaryRect(const QPatientTreeItem &item, const QRect &row) const;
    bool showWholeText(const QPoint &position, const QPoint &globalPosition);

    ColumnWidths m_widths;
    QStringList m_columnNames;
    CaptionHeader *m_captions;
    std::array<RecordDelegate *, columnKindCount> m_delegates{}; ///< made when first needed
    RecordDelegate *m_patientNames;
    RecordDelegate *m_states;
    QPatientTreeModel *m_tree = nullptr;
    int m_patientColumns = 0;
    QString m_emptyText;
    bool m_wasShown = false;
};
