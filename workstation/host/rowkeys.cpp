#include "rowkeys.h"

#include "ntableview.h"
#include "recordform.h"

#include <QItemSelectionModel>
#include <QKeyEvent>

#include <algorithm>

namespace {

bool movesRow(const QKeyEvent &key)
{
    const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool moves = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp
        || key.key() == Qt::Key_PageDown;
    return plain && moves;
}

} // namespace

RowKeys::RowKeys(QVector<RecordForm *> forms, QObject *parent)
    : QObject(parent)
    , m_forms(std::move(forms))
{
    for (RecordForm *form : m_forms) {
        form->view()->installEventFilter(this);
    }
}

bool RowKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyRelease) {
        const auto *key = static_cast<QKeyEvent *>(event);
        for (int level = 0; level < m_forms.size(); ++level) {
            if (watched == m_forms[level]->view() && !key->isAutoRepeat() && movesRow(*key)) {
                choose(level);
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

void RowKeys::choose(int level) const
{
    NTableView *view = m_forms[level]->view();
    const QModelIndex current = view->currentIndex();
    const bool endangersEdits = std::any_of(m_forms.begin() + level + 1, m_forms.end(),
        [](const RecordForm *form) { return form->hasUnsavedEdits(); });
    if (current.isValid() && view->selectionModel()->isSelected(current) && !endangersEdits) {
        emit view->clicked(current);
    }
}
