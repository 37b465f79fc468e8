#pragma once

#include <QListView>

/**
 * The list of thumbnails. Tells apart what the keys choose from a current item that comes by itself, as the
 * first one does when the list gets the focus. Owned by its parent; GUI thread.
 */
class ThumbnailList : public QListView
{
    Q_OBJECT

public:
    using QListView::QListView;

signals:
    void chosenByKey(const QModelIndex &index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
