#include "checks.h"

#include <patientqueryform.h>

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>

void Checks::queryPanel()
{
    QMainWindow window;
    auto *panel = new PatientQueryForm(nullptr);
    auto *dock = new QDockWidget(&window);
    dock->setWidget(panel);
    panel->setDockWidget(dock);
    window.addDockWidget(Qt::RightDockWidgetArea, dock);
    window.show();
    QAction action;
    panel->onAction(&action);
    panel->onPatient({});
    panel->onInstancePK(1);
    panel->onDeleteThumbView();
    const QSignalSpy loading(panel, SIGNAL(loadDir(bool)));
    const QSignalSpy chosen(panel, SIGNAL(setComboBoxIdx(int)));
    expect(QMetaObject::invokeMethod(panel, "on_LoadDir_clicked") && loading.size() == 1 && chosen.isValid(),
        QStringLiteral("an import from the panel"));
    panel->findChild<QPushButton *>(QStringLiteral("dockButton"))->click();
    expect(dock->isFloating() && panel->findChild<QWidget *>(QStringLiteral("QueryWidget")),
        QStringLiteral("a panel that floats, with room for thumbnails"));
}
