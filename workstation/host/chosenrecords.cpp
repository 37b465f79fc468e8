#include "chosenrecords.h"

#include "ntableview.h"
#include "recordform.h"
#include "workstationwindow.h"

ChosenRecords::ChosenRecords(const WorkstationWindow &window)
    : m_shown{window.shownPatients()->text(), window.shownPatients()->pick()}
    , m_filter(window.shownPatients()->count() > 0 ? window.shownPatients()->filter() : QString())
{
    for (const RecordForm *form : window.forms()) {
        const QList<qlonglong> keys = form->selectedKeys();
        m_keys.append(QSet<qlonglong>(keys.begin(), keys.end()));
    }
}

void ChosenRecords::listIn(const WorkstationWindow &window) const
{
    ShownPatients *shown = window.shownPatients();
    if (m_shown.pick != DatePick::Other) {
        shown->showInstead(m_shown.text, m_shown.pick);
    } else if (!m_filter.isEmpty()) {
        shown->showCondition(m_filter);
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
