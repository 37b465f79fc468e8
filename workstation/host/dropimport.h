#pragma once

#include <QObject>

class QMimeData;
class QWidget;

/**
 * Takes files and folders that are dropped on the window, outside of the tables, which take their own. Owned
 * by the window; GUI thread.
 */
class DropImport : public QObject
{
    Q_OBJECT

public:
    explicit DropImport(QWidget *window);

    /// Local files and folders of what is dragged; empty where there are none.
    static QStringList pathsOf(const QMimeData *data);

signals:
    void dropped(const QStringList &paths);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
