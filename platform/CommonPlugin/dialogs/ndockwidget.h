#pragma once

#include "commonplugin_export.h"

#include <QDockWidget>

/**
 * A dock of the workstation: at the left or right, or floating. One that is closed while it floats is a tool
 * window that is done with, and deletes itself; a docked one only hides. The widget inside is asked first, by
 * its own closeEvent(): it stays where that ignores the event.
 */
class COMMONPLUGIN_EXPORT NDockWidget : public QDockWidget
{
    Q_OBJECT

public:
    explicit NDockWidget(const QString &title, QWidget *parent = nullptr);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    bool mayClose() const;
};
