#include "datasavetypeform.h"
#include "ndockwidget.h"
#include "testmain.h"

#include <QMainWindow>
#include <QPushButton>
#include <QtTest>

class SmallDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void laterQuestionTakesThePlace()
    {
        DataSaveTypeForm *form = DataSaveTypeForm::instance();
        QStringList answered;
        form->ask(this, [&answered](int) { answered.append(QStringLiteral("first")); });
        form->ask(this, [&answered](int) { answered.append(QStringLiteral("second")); });
        form->findChild<QPushButton *>(QStringLiteral("copy"))->click();
        QCOMPARE(answered, QStringList{QStringLiteral("second")});
    }

    void dockIsDeletedOnlyWhenItFloats_data()
    {
        QTest::addColumn<bool>("floating");
        QTest::newRow("docked") << false;
        QTest::newRow("floating") << true;
    }

    void dockIsDeletedOnlyWhenItFloats()
    {
        QFETCH(bool, floating);
        QMainWindow window;
        const QPointer<NDockWidget> dock(new NDockWidget(QStringLiteral("Anonymize"), &window));
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        dock->setFloating(floating);
        window.show();
        QCOMPARE(dock->windowTitle(), QStringLiteral("Anonymize"));
        QVERIFY(!dock->isAreaAllowed(Qt::TopDockWidgetArea));
        dock->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(dock.isNull(), floating);
    }
};

PM_TEST_MAIN(SmallDialogsTest)
#include "tst_smalldialogs.moc"
