#include "rowkeys.h"

#include "ntableview.h"
#include "recordform.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

RowKeys::RowKeys(QVector<RecordForm *> forms, QObject *parent)
    : QObject(parent)
    , m_forms(std::move(forms))
{
    for (int level = 0; level < m_forms.size(); ++level) {
        NTableView *view = m_forms[level]->view();
        view->setTabKeyNavigation(false);
        for (QObject *watched : {static_cast<QObject *>(view), static_cast<QObject *>(view->viewport())}) {
            watched->installEventFilter(this);
            m_levels.insert(watched, level);
        }
    }
}

RowKeys::Highlight RowKeys::highlight(int level) const
{
    const NTableView *view = m_forms[level]->view();
    Highlight now{view->currentIndex().row(), 0};
    for (const QItemSelectionRange &range : view->selectionModel()->selection()) {
        now.selected += range.height();
    }
    return now;
}

bool RowKeys::eventFilter(QObject *watched, QEvent *event)
{
    // Views get events also while their form is being destroyed: the form is asked for keys and clicks alone.
    const int level = m_levels.value(watched);
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        onKey(level, *static_cast<QKeyEvent *>(event));
    } else if (event->type() == QEvent::MouseButtonRelease
        && static_cast<QMouseEvent *>(event)->button() == Qt::RightButton) {
        choose(level);
    }
    return QObject::eventFilter(watched, event);
}

void RowKeys::onKey(int level, const QKeyEvent &key)
{
    if (key.isAutoRepeat()) {
        return;
    }
    if (key.type() == QEvent::KeyPress) {
        m_before = highlight(level);
    } else if (highlight(level) != m_before) {
        m_before = highlight(level);
        choose(level);
    }
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
