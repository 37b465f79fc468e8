#include "chosenrecords.h"

#include "ntableview.h"
#include "recordform.h"
#include "workstationwindow.h"

ChosenRecords::ChosenRecords(const WorkstationWindow &window)
{
    for (const RecordForm *form : window.forms()) {
        const QList<qlonglong> keys = form->selectedKeys();
        m_keys.append(QSet<qlonglong>(keys.begin(), keys.end()));
    }
}

void ChosenRecords::selectIn(const WorkstationWindow &window) const
{
    for (int level = 0; level < m_keys.size(); ++level) {
        RecordForm *form = window.forms()[level];
        form->selectKeys(m_keys[level]);
        const QModelIndexList selected = form->view()->selectionModel()->selectedRows();
        if (selected.isEmpty()) {
            return;
        }
        form->view()->selectionModel()->setCurrentIndex(selected.first(), QItemSelectionModel::NoUpdate);
        form->selectIndex(selected.first());
    }
}
