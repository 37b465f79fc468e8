#include "fieldview.h"

void FieldView::keyboardSearch(const QString &search)
{
    // A view of this selection mode toggles each row that it goes to.
    const QItemSelection selected = selectionModel()->selection();
    QListView::keyboardSearch(search);
    selectionModel()->select(selected, QItemSelectionModel::ClearAndSelect);
}
