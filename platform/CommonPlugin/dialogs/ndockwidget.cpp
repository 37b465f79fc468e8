#include "ndockwidget.h"

#include <QCloseEvent>

NDockWidget::NDockWidget(const QString &title, QWidget *parent)
    : QDockWidget(title, parent)
{
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    setAccessibleName(title);
}

void NDockWidget::closeEvent(QCloseEvent *event)
{
    QDockWidget::closeEvent(event);
    if (isFloating() && event->isAccepted()) {
        deleteLater();
    }
}
