#include "thumbnaillist.h"

#include <QKeyEvent>

void ThumbnailList::keyPressEvent(QKeyEvent *event)
{
    const QPersistentModelIndex before = currentIndex();
    QListView::keyPressEvent(event);
    const QModelIndex now = currentIndex();
    if (now.isValid() && (before != now || event->key() == Qt::Key_Space)) {
        emit chosenByKey(now);
    }
}
