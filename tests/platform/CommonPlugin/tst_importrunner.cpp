#include "importprogresswidget.h"
#include "importrunner.h"
#include "importscene.h"
#include "testmain.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QtTest>

Q_DECLARE_METATYPE(ImportReport)

namespace {

/// Collects what a runner tells.
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(ImportRunner *runner)
    {
        connect(runner, &ImportRunner::started, this, [this] { ++starts; });
        connect(runner, &ImportRunner::finished, this,
            [this](const ImportReport &report) { reports.append(report); });
    }

    int starts = 0;
    QList<ImportReport> reports;
};

int visibleProgressWindows()
{
    int count = 0;
    for (const QWidget *widget : QApplication::topLevelWidgets()) {
        count += qobject_cast<const ImportProgressWidget *>(widget) && widget->isVisible() ? 1 : 0;
    }
    return count;
}

} // namespace

class ImportRunnerTest : public QObject
{
    Q_OBJECT

private slots:
    void runsOneAfterAnother()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.addImage(2);
        ImportRunner runner;
        const Listener listener(&runner);
        runner.start({scene.imagePath(1)}, 0);
        runner.start({scene.folder()}, 0);
        QVERIFY(runner.isRunning());
        QTRY_COMPARE(listener.reports.size(), 2);
        QVERIFY(!runner.isRunning());
        QCOMPARE(listener.starts, 2);
        QCOMPARE(listener.reports.at(0).of(FileVerdict::New), 1);
        QCOMPARE(listener.reports.at(1).of(FileVerdict::New), 1);
        QCOMPARE(listener.reports.at(1).of(FileVerdict::AlreadyThere), 1);
        QCOMPARE(scene.imageCount(), 2);
    }

    void cancelEndsAllWithReports()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.lock();
        ImportRunner runner;
        const Listener listener(&runner);
        runner.start({scene.folder()}, 0);
        runner.start({scene.folder()}, 1);
        QTRY_COMPARE(runner.progress().found, 1);
        runner.cancel();
        QTRY_COMPARE(listener.reports.size(), 2);
        QVERIFY(listener.reports.at(0).end == ImportEnd::Cancelled);
        QVERIFY(listener.reports.at(1).end == ImportEnd::Cancelled);
        scene.unlock();
        QCOMPARE(scene.imageCount(), 0);
    }

    void destructionWhileRunningIsPrompt()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.lock();
        auto runner = std::make_unique<ImportRunner>();
        runner->start({scene.folder()}, 0);
        runner->start({scene.folder()}, 0);
        QTRY_COMPARE(runner->progress().found, 1);
        QElapsedTimer time;
        time.start();
        runner.reset();
        QVERIFY(time.elapsed() < 2000);
        QCOMPARE(visibleProgressWindows(), 0);
        scene.unlock();
        QCOMPARE(scene.imageCount(), 0);
    }

    void startsAgainFromItsOwnFinish()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.addImage(2);
        ImportRunner runner;
        const Listener listener(&runner);
        const auto once = std::make_shared<QMetaObject::Connection>();
        *once = connect(&runner, &ImportRunner::finished, this, [&, once] {
            disconnect(*once);
            runner.start({scene.imagePath(2)}, 0);
        });
        runner.start({scene.imagePath(1)}, 0);
        QTRY_COMPARE(listener.reports.size(), 2);
        QCOMPARE(listener.starts, 2);
        QCOMPARE(scene.imageCount(), 2);
    }

    void unknownModeIsIgnored()
    {
        const ImportScene scene;
        ImportRunner runner;
        runner.start({scene.folder()}, 2);
        QVERIFY(!runner.isRunning());
        QCOMPARE(visibleProgressWindows(), 0);
    }

    void progressIsShownUnlessUnwanted()
    {
        const ImportScene scene;
        scene.addImage(1);
        ImportRunner runner;
        const Listener listener(&runner);
        runner.setProgressShown(false);
        runner.start({scene.folder()}, 0);
        QCOMPARE(visibleProgressWindows(), 0);
        runner.setProgressShown(true);
        runner.start({scene.folder()}, 0);
        QCOMPARE(visibleProgressWindows(), 1);
        QTRY_COMPARE(listener.reports.size(), 2);
    }
};

PM_TEST_MAIN(ImportRunnerTest)
#include "tst_importrunner.moc"
