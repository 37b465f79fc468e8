#include "ndockwidget.h"

#include <QCloseEvent>
#include <QCoreApplication>

NDockWidget::NDockWidget(const QString &title, QWidget *parent)
    : QDockWidget(title, parent)
{
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    setAccessibleName(title);
}

void NDockWidget::closeEvent(QCloseEvent *event)
{
    if (!mayClose()) {
        event->ignore();
        return;
    }
    QDockWidget::closeEvent(event);
    if (isFloating() && event->isAccepted()) {
        deleteLater();
    }
}

bool NDockWidget::mayClose() const
{
    QCloseEvent asked;
    if (widget()) {
        QCoreApplication::sendEvent(widget(), &asked);
    }
    return asked.isAccepted();
}
