#include "sharedwindows.h"

#include <QCoreApplication>
#include <QPointer>
#include <QVector>
#include <QWidget>

namespace {

QVector<QPointer<QWidget>> &windows()
{
    static QVector<QPointer<QWidget>> all;
    return all;
}

} // namespace

void SharedWindows::add(QWidget *window)
{
    if (windows().isEmpty()) {
        qAddPostRoutine(SharedWindows::deleteAll);
    }
    windows().append(window);
}

void SharedWindows::deleteAll()
{
    const QVector<QPointer<QWidget>> all = windows();
    windows().clear();
    for (const QPointer<QWidget> &window : all) {
        delete window;
    }
}
