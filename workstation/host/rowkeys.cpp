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
    for (RecordForm *form : m_forms) {
        form->view()->setTabKeyNavigation(false);
        form->view()->installEventFilter(this);
        form->view()->viewport()->installEventFilter(this);
    }
}

int RowKeys::levelOf(const QObject *watched) const
{
    const auto isWatched = [watched](const RecordForm *form) {
        return watched == form->view() || watched == form->view()->viewport();
    };
    return int(std::find_if(m_forms.begin(), m_forms.end(), isWatched) - m_forms.begin());
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
    const int level = levelOf(watched);
    if (level == m_forms.size()) {
        return QObject::eventFilter(watched, event);
    }
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
