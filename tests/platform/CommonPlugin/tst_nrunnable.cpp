#include "dicomfilebuilder.h"
#include "importprogresswidget.h"
#include "importscene.h"
#include "nrunnable.h"
#include "testmain.h"

#include <QPushButton>
#include <QThread>
#include <QThreadPool>
#include <QtTest>

namespace {

/// A loader with a thread whose event loop runs it, as the main window has.
class LoaderThread
{
public:
    LoaderThread() { m_thread.start(); }
    ~LoaderThread()
    {
        m_thread.quit();
        m_thread.wait();
    }
    void run(NRunnable *loader)
    {
        loader->moveToThread(&m_thread);
        QMetaObject::invokeMethod(loader, &NRunnable::runRunnable, Qt::QueuedConnection);
    }

private:
    QThread m_thread;
};

QPushButton *buttonOf(const QWidget *widget, const char *name)
{
    return widget->findChild<QPushButton *>(QLatin1String(name));
}

} // namespace

class NRunnableTest : public QObject
{
    Q_OBJECT

private slots:
    void loadsOnItsThreadAndTellsOnThisOne()
    {
        const ImportScene scene;
        scene.addImage(1);
        LoaderThread thread;
        NRunnable loader;
        QCOMPARE(loader.loadDirectors({scene.folder()}, 1), 0);
        const QThread *told = nullptr;
        QSignalSpy finished(loader.notifier(), &LoadNotifier::finishReadFiles);
        // No receiver object: would run on the loader's thread if the signal came from there.
        connect(
            loader.notifier(), &LoadNotifier::finishReadFiles, [&told] { told = QThread::currentThread(); });
        thread.run(&loader);
        QVERIFY(finished.wait());
        QCOMPARE(finished.first().first().toBool(), true);
        QCOMPARE(told, QThread::currentThread());
        QCOMPARE(loader.report().of(FileVerdict::New), 1);
        QCOMPARE(scene.index.query(QStringLiteral("SELECT IrradiationEventUID FROM imageformat")).toString(),
            QStringLiteral("copy"));
    }

    void refusesWhatItCannotLoad_data()
    {
        QTest::addColumn<QStringList>("folders");
        QTest::addColumn<int>("type");
        QTest::newRow("unknown mode") << QStringList{QStringLiteral("/tmp")} << 2;
        QTest::newRow("negative mode") << QStringList{QStringLiteral("/tmp")} << -1;
        QTest::newRow("nothing to load") << QStringList() << 0;
    }

    void refusesWhatItCannotLoad()
    {
        QFETCH(QStringList, folders);
        QFETCH(int, type);
        const ImportScene scene;
        NRunnable loader;
        QVERIFY(loader.loadDirectors(folders, type) != 0);
        QSignalSpy finished(loader.notifier(), &LoadNotifier::finishReadFiles);
        loader.runRunnable();
        QVERIFY(finished.wait());
        QCOMPARE(finished.first().first().toBool(), false);
    }

    void cancelledBeforeItsTurn()
    {
        const ImportScene scene;
        scene.addImage(1);
        NRunnable loader;
        loader.loadDirectors({scene.folder()}, 0);
        QSignalSpy finished(loader.notifier(), &LoadNotifier::finishReadFiles);
        loader.cancel();
        loader.run();
        QVERIFY(finished.wait());
        QCOMPARE(finished.first().first().toBool(), false);
        QVERIFY(loader.report().end == ImportEnd::Cancelled);
        QCOMPARE(scene.imageCount(), 0);
    }

    void cancelledWhileRunning()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.lock();
        LoaderThread thread;
        NRunnable loader;
        loader.loadDirectors({scene.folder()}, 0);
        QSignalSpy finished(loader.notifier(), &LoadNotifier::finishReadFiles);
        loader.progressWidget()->show();
        thread.run(&loader);
        QPushButton *cancel = buttonOf(loader.progressWidget(), "cancel");
        cancel->click();
        QVERIFY(!cancel->isEnabled());
        QVERIFY(finished.wait(2000));
        scene.unlock();
        QVERIFY(buttonOf(loader.progressWidget(), "close")->isVisible());
        loader.progressWidget()->close();
    }

    void deletedBeforeItsTurn()
    {
        const ImportScene scene;
        auto loader = std::make_unique<NRunnable>();
        loader->loadDirectors({scene.folder()}, 0);
        QSignalSpy finished(loader->notifier(), &LoadNotifier::finishReadFiles);
        const QPointer<ImportProgressWidget> progress(loader->progressWidget());
        progress->show();
        loader.reset();
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(finished.first().first().toBool(), false);
        QTRY_VERIFY(!progress);
    }

    void runsInAPool()
    {
        const ImportScene scene;
        scene.addImage(1);
        auto *loader = new NRunnable;
        loader->setAutoDelete(true);
        loader->loadDirectors({scene.folder()}, 0);
        QSignalSpy finished(loader->notifier(), &LoadNotifier::finishReadFiles);
        const QPointer<ImportProgressWidget> progress(loader->progressWidget());
        QThreadPool pool;
        pool.start(loader);
        QVERIFY(finished.wait());
        QTRY_VERIFY(!progress); // nobody ever showed it
        QCOMPARE(finished.size(), 1);
        QCOMPARE(scene.imageCount(), 1);
    }

    void reportOutlivesTheLoaderAndTriesAgain()
    {
        const ImportScene scene;
        scene.addImage(1);
        scene.addBrokenImage(2);
        auto loader = std::make_unique<NRunnable>();
        loader->loadDirectors({scene.folder()}, 0);
        QSignalSpy finished(loader->notifier(), &LoadNotifier::finishReadFiles);
        const QPointer<ImportProgressWidget> progress(loader->progressWidget());
        progress->show();
        loader->runRunnable();
        QVERIFY(finished.wait());
        loader.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(progress);
        QCOMPARE(scene.imageCount(), 1);

        scene.addImage(2);
        buttonOf(progress, "retry")->click();
        QVERIFY(finished.wait());
        QCOMPARE(finished.size(), 2);
        QCOMPARE(finished.last().first().toBool(), true);
        QCOMPARE(scene.imageCount(), 2);
        QVERIFY(!buttonOf(progress, "retry")->isEnabled());
        buttonOf(progress, "close")->click();
        QTRY_VERIFY(!progress);
    }

    void leavesTryAgainToWhoeverListens()
    {
        const ImportScene scene;
        const QString broken = scene.addBrokenImage(1);
        NRunnable loader;
        loader.loadDirectors({scene.folder()}, 0);
        QSignalSpy finished(loader.notifier(), &LoadNotifier::finishReadFiles);
        const QPointer<ImportProgressWidget> progress(loader.progressWidget());
        QSignalSpy asked(progress.data(), &ImportProgressWidget::retryRequested);
        progress->show();
        loader.runRunnable();
        QVERIFY(finished.wait());
        buttonOf(progress, "retry")->click();
        QCOMPARE(asked.size(), 1);
        QCOMPARE(asked.first().first().toStringList(), QStringList{broken});
        QTRY_VERIFY(!progress);
        QCOMPARE(finished.size(), 1);
    }
};

PM_TEST_MAIN(NRunnableTest)
#include "tst_nrunnable.moc"
