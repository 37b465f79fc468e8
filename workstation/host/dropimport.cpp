#include "dropimport.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

DropImport::DropImport(QWidget *window)
    : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

QStringList DropImport::pathsOf(const QMimeData *data)
{
    QStringList paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

bool DropImport::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const QStringList paths = pathsOf(drop->mimeData());
        if (paths.isEmpty()) {
            drop->ignore();
            return true;
        }
        // The files stay where they are, whatever the program that they come from proposes.
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        if (event->type() == QEvent::Drop) {
            emit dropped(paths);
        }
        return true;
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}
