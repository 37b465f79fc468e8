#include "checks.h"

#include <patientqueryform.h>

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>

namespace {

/// Presses a button of the panel and expects a signal, named by its text.
void expectAnswer(PatientQueryForm *panel, const char *button, const char *signal)
{
    QSignalSpy heard(panel, signal);
    panel->findChild<QPushButton *>(QLatin1String(button))->click();
    Checks::expect(heard.size() == 1, QLatin1String(button) + QLatin1String(signal));
}

} // namespace

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
    expectAnswer(panel, "search", SIGNAL(searchPatient(QString)));
    expectAnswer(panel, "AdvanceInquiry", SIGNAL(IsChecked(bool)));
    expectAnswer(panel, "AdvanceInquiry", SIGNAL(advanceInquiry(bool)));
    expectAnswer(panel, "pushButton_joint", SIGNAL(jointStart()));
    expectAnswer(panel, "pushButton_regist", SIGNAL(compareStart()));
    expectAnswer(panel, "pushButton_vessel", SIGNAL(vesselStart()));
    expectAnswer(panel, "pushButton_swi", SIGNAL(swiStart()));
    expectAnswer(panel, "pushButton_infarction", SIGNAL(brainSegment(bool)));
    const QSignalSpy loading(panel, SIGNAL(loadDir(bool)));
    const QSignalSpy chosen(panel, SIGNAL(setComboBoxIdx(int)));
    expect(QMetaObject::invokeMethod(panel, "on_LoadDir_clicked") && loading.size() == 1 && chosen.isValid(),
        QStringLiteral("an import from the panel"));
    panel->findChild<QPushButton *>(QStringLiteral("dockButton"))->click();
    expect(dock->isFloating() && panel->findChild<QWidget *>(QStringLiteral("QueryWidget")),
        QStringLiteral("a panel that floats, with room for thumbnails"));
}
