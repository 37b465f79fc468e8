#include "frame.h"
#include "importcentre.h"
#include "kivmessageboxform.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "tableinfoform.h"
#include "tablestage.h"
#include "testmain.h"

#include <QAction>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QSqlTableModel>
#include <QToolBar>
#include <QtTest>

class FrameTest : public QObject
{
    Q_OBJECT

private slots:
    void showsAllFourTablesFilledForTheFirstPatient()
    {
        const Frame frame(3);
        frame.window->stage()->selectFirst();
        for (RecordForm *form : frame.window->forms()) {
            QVERIFY(form->isVisible());
            QVERIFY(form->height() > 100);
            QVERIFY(form->tableModel()->rowCount() > 0);
        }
    }

    void bringsTheOtherTablesBack()
    {
        const Frame frame(1);
        frame.window->stage()->showTable(QStringLiteral("generalseries"));
        for (int level = 0; level < 4; ++level) {
            QCOMPARE(frame.window->forms()[level]->isVisible(), level == 2);
        }
        frame.window->stage()->showTable(QString());
        for (const RecordForm *form : frame.window->forms()) {
            QVERIFY(form->isVisible());
        }
        QVERIFY(!frame.window->library()->getTableInfoForm()->isVisible());
    }

    void offersOnlyActionsThatDoSomething()
    {
        const Frame frame;
        const QMetaObject *library = frame.window->library()->metaObject();
        for (const QAction *menu : frame.window->menuBar()->actions()) {
            QVERIFY(!menu->menu()->actions().isEmpty());
            for (const QAction *action : menu->menu()->actions()) {
                if (action->parent() == frame.window->library()) {
                    const QByteArray slot = "on_" + action->objectName().toLatin1() + "_triggered()";
                    QVERIFY2(library->indexOfMethod(slot) >= 0, slot);
                }
            }
        }
        const QList<QAction *> tools = frame.window->library()->findChild<QToolBar *>()->actions();
        QCOMPARE(tools.size(), 4);
        QVERIFY(tools[0]->isEnabled() && tools[1]->isEnabled() && tools[3]->isSeparator());
    }

    void importsWhatIsDroppedOnIt()
    {
        const Frame frame;
        const QTemporaryDir empty;
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(empty.path()), QUrl(QStringLiteral("https://example.org/x"))});
        QSignalSpy ended(frame.window->imports(), &ImportCentre::ended);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(QApplication::sendEvent(frame.window.get(), &enter) && enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(QApplication::sendEvent(frame.window.get(), &drop) && drop.isAccepted());
        QTRY_COMPARE(ended.count(), 1);

        QMimeData foreign;
        foreign.setText(QStringLiteral("no file"));
        QDragEnterEvent text(QPoint(5, 5), Qt::CopyAction, &foreign, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(frame.window.get(), &text);
        QVERIFY(!text.isAccepted());
    }
};

PM_TEST_MAIN(FrameTest)
#include "tst_frame.moc"
