// How rows of the patient tree are opened and selected: quick also where all of an index is in it.

#include "patienttreeview.h"

#include "qpatienttreeitem.h"
#include "qpatienttreemodel.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace {

/// A selection compares each branch with every other: hundreds are quick, all branches of an index take
/// minutes.
constexpr int mostSelectedBranches = 500;

} // namespace

void PatientTreeView::openLevels(int levels)
{
    openWhere([levels](const QPatientTreeItem &item) {
        return item.getPatient() ? levels > 0 : item.getStudy() && levels > 1;
    });
}

void PatientTreeView::openWhere(const std::function<bool(const QPatientTreeItem &)> &isOpen)
{
    collapseAll();
    // While a layout waits, opening a row is a mark; one layout at the end then takes them all in one pass.
    scheduleDelayedItemsLayout();
    open(QModelIndex(), isOpen);
    executeDelayedItemsLayout();
}

void PatientTreeView::open(
    const QModelIndex &parent, const std::function<bool(const QPatientTreeItem &)> &isOpen)
{
    const int rows = m_tree ? m_tree->rowCount(parent) : 0;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = m_tree->index(row, 0, parent);
        if (isOpen(*item(index))) {
            expand(index);
            open(index, isOpen);
        }
    }
}

QList<const IndexRecord *> PatientTreeView::selectedRecords() const
{
    QList<const IndexRecord *> records;
    // Row by row: the cells of a row stand for one record.
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const QPatientTreeItem *behind = item(model()->index(row, range.left(), range.parent()));
            if (const IndexRecord *record = behind ? behind->record() : nullptr) {
                records.append(record);
            }
        }
    }
    return records;
}

void PatientTreeView::selectAll()
{
    const int last = model() ? model()->rowCount() - 1 : -1;
    if (!hasManyBranches(0, last)) {
        QTreeView::selectAll();
    } else if (selectionMode() == ContiguousSelection) {
        selectPatients(0, last, QItemSelectionModel::ClearAndSelect);
    }
}

void PatientTreeView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    const QRect range = rect.normalized();
    const int left = header()->sectionViewportPosition(0); // a place within each row
    const QModelIndex above = indexAt({left, range.top()});
    const QModelIndex below = indexAt({left, range.bottom()});
    const int first = patientRow(above);
    const int last = below.isValid() ? patientRow(below) : model()->rowCount() - 1;
    if ((above.isValid() || below.isValid()) && hasManyBranches(first, last)) {
        selectPatients(first, last, command);
    } else {
        QTreeView::setSelection(rect, command);
    }
}

int PatientTreeView::patientRow(QModelIndex row)
{
    while (row.parent().isValid()) {
        row = row.parent();
    }
    return qMax(row.row(), 0);
}

/// @param first and last rows of patients
bool PatientTreeView::hasManyBranches(int first, int last) const
{
    int open = 0;
    for (int row = first; row <= last && open <= mostSelectedBranches; ++row) {
        const QModelIndex patient = model()->index(row, 0);
        if (!isExpanded(patient)) {
            continue;
        }
        ++open;
        for (int child = 0; child < model()->rowCount(patient); ++child) {
            open += isExpanded(model()->index(child, 0, patient)) ? 1 : 0;
        }
    }
    return open > mostSelectedBranches;
}

/// One range, however many they are.
void PatientTreeView::selectPatients(int first, int last, QItemSelectionModel::SelectionFlags command)
{
    selectionModel()->select(
        {model()->index(first, 0), model()->index(last, model()->columnCount() - 1)}, command);
}

/// Only the first column has children for the base class: any other opens the branch here.
void PatientTreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPersistentModelIndex row = indexAt(event->pos()).siblingAtColumn(0);
    const bool elsewhere = indexAt(event->pos()).column() > 0;
    QTreeView::mouseDoubleClickEvent(event);
    if (elsewhere && row.isValid()) {
        setExpanded(row, !isExpanded(row));
    }
}

void PatientTreeView::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid()) {
        emit clicked(currentIndex());
        return;
    }
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        // Only from its first column does a row lead to its children and its parent.
        selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(0), QItemSelectionModel::NoUpdate);
    }
    QTreeView::keyPressEvent(event);
}

/// All that is in sight: the base class looks for every selected row, of which there may be all.
QRegion PatientTreeView::visualRegionForSelection(const QItemSelection &) const
{
    return viewport()->rect();
}
