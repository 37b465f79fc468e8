#include "emptytext.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyle>

namespace {

constexpr int margin = 24;

} // namespace

void paintEmptyText(QAbstractItemView *view, const QString &text)
{
    if (text.isEmpty() || (view->model() && view->model()->rowCount(view->rootIndex()) > 0)) {
        return;
    }
    QPainter painter(view->viewport());
    const int top = qMin(margin, view->viewport()->height() / 4);
    view->style()->drawItemText(&painter, view->viewport()->rect().adjusted(margin, top, -margin, 0),
        Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, view->palette(), view->isEnabled(), text,
        QPalette::Text);
}
