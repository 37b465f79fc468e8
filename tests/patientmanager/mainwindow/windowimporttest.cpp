#include "datasavetypeform.h"
#include "messageanswers.h"
#include "patientform.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QAction>
#include <QDirIterator>
#include <QSignalSpy>
#include <QSqlTableModel>
#include <QtTest>

namespace {

/// An import that is over: its finish was handled, and the refresh it causes was emitted.
constexpr int importWait = 30'000;

} // namespace

class WindowImportTest : public WindowTest
{
    Q_OBJECT

private slots:
    void modeComesFromTheFirstMainIni_data()
    {
        QTest::addColumn<QString>("reference");
        QTest::addColumn<QString>("copy");
        QTest::addColumn<bool>("copied");
        const QString working = QStringLiteral("working/config/main.ini");
        const QString beside = QStringLiteral("program/config/main.ini");
        const QString above = QStringLiteral("config/main.ini");
        QTest::newRow("none") << QString() << QString() << false;
        QTest::newRow("working directory") << QString() << working << true;
        QTest::newRow("above the program") << QString() << above << true;
        QTest::newRow("working directory before the one above") << working << above << false;
        QTest::newRow("never beside the program") << QString() << beside << false;
    }

    void modeComesFromTheFirstMainIni()
    {
        QFETCH(QString, reference);
        QFETCH(QString, copy);
        QFETCH(bool, copied);
        for (const auto &[file, mode] : {std::pair(reference, "0"), std::pair(copy, "1")}) {
            if (!file.isEmpty()) {
                fixture->writeIni(file, QByteArray("[dataCopyType]\ndataCopyType=") + mode + "\n");
            }
        }
        const QString folder = fixture->makeSeries(QStringLiteral("series"), 1);
        PatientManagerMainWindow &window = fixture->open();
        window.onLoadSelecetPath(folder);
        QVERIFY(window.isImporting());
        waitForImports(window);
        QCOMPARE(fixture->index.count("imageformat"), 1);
        QCOMPARE(storedPath().startsWith(fixture->index.folder()), copied);
        QVERIFY(QFile::exists(storedPath()));
        QCOMPARE(
            fixture->index.query(QStringLiteral("SELECT IrradiationEventUID FROM imageformat")).toString(),
            copied ? QStringLiteral("copy") : QString());
    }

    void askingModeLoadsOnceWhenChosen()
    {
        fixture->writeIni(QStringLiteral("config/main.ini"), "[dataCopyType]\ndataCopyType=2\n");
        const QString first = fixture->makeSeries(QStringLiteral("first"), 1);
        const QString second = fixture->makeSeries(QStringLiteral("second"), 1);
        PatientManagerMainWindow &window = fixture->open();
        DataSaveTypeForm *choice = DataSaveTypeForm::instance();
        QSignalSpy started(&window, &PatientManagerMainWindow::runnable);

        window.onLoadSelecetPath(first);
        QVERIFY(choice->isVisible());
        choice->close();
        QVERIFY(!window.isImporting());

        window.onLoadSelecetPath(second);
        QVERIFY(choice->isVisible());
        emit choice->dataType(1);
        emit choice->dataType(1);
        waitForImports(window);
        QCOMPARE(started.size(), 1);
        QCOMPARE(fixture->index.query(QStringLiteral("SELECT PatientID FROM patient")).toString(),
            QStringLiteral("second"));
        QVERIFY(storedPath().startsWith(fixture->index.folder()));
    }

    void refusedRunEndsAtOnceAndShowsNothing()
    {
        PatientManagerMainWindow &window = fixture->open();
        QSignalSpy refreshed(&window, &PatientManagerMainWindow::basicInquiyShow);
        window.onLoadDir(0); // no path was taken
        QVERIFY(!visibleWindow("ImportProgressWidget"));
        waitForImports(window);
        QCOMPARE(refreshed.size(), 1);
    }

    void importsTakeTurns()
    {
        const QString first = fixture->makeSeries(QStringLiteral("first"), 40);
        const QString second = fixture->makeSeries(QStringLiteral("second"), 30);
        PatientManagerMainWindow &window = fixture->open();
        QSignalSpy refreshed(&window, &PatientManagerMainWindow::basicInquiyShow);
        window.onLoadSelecetPath(first);
        window.onLoadSelecetPath(second);
        waitForImports(window);
        QCOMPARE(refreshed.size(), 2);
        QCOMPARE(fixture->index.count("patient"), 2);
        QCOMPARE(fixture->index.count("imageformat"), 70);
        // In order: the first import wrote all of its rows before the second one began.
        QCOMPARE(fixture->index.query(QStringLiteral("SELECT PatientID FROM patient ORDER BY pk")).toString(),
            QStringLiteral("first"));
    }

    void hostMayHoldTheRefreshBack()
    {
        fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
        const QString folder = fixture->makeSeries(QStringLiteral("series"), 1);
        PatientManagerMainWindow &window = fixture->open();
        QSqlTableModel *model = window.getPatientForm()->tableModel();
        const QModelIndex comment = model->index(0, model->fieldIndex(QStringLiteral("PatientComments")));
        QVERIFY(model->setData(comment, QStringLiteral("unsaved")));
        auto *refresh = window.findChild<QAction *>(QStringLiteral("actionRefresh"));
        disconnect(refresh, &QAction::triggered, &window, nullptr);
        QSignalSpy wanted(refresh, &QAction::triggered);
        window.onLoadSelecetPath(folder);
        waitForImports(window);
        QCOMPARE(wanted.size(), 1);
        QCOMPARE(comment.data().toString(), QStringLiteral("unsaved"));
    }

    void leavingStopsWhatRuns()
    {
        const QString folder = fixture->makeSeries(QStringLiteral("series"), 400);
        PatientManagerMainWindow &window = fixture->open();
        window.onLoadSelecetPath(folder);
        window.onLoadSelecetPath(folder);
        QVERIFY(window.isImporting());
        fixture->closeWindow();
        QVERIFY(!visibleWindow("ImportProgressWidget"));
        QCOMPARE(
            fixture->index.query(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
        QVERIFY(!fixture->index.query(QStringLiteral("PRAGMA foreign_key_check")).isValid());
        QVERIFY(fixture->index.count("imageformat") <= 400);
    }

    void wholeDiskIsAskedFor()
    {
        fixture->writeIni(
            QStringLiteral("config/dicomsendservice.ini"), "[one]\nAETitle=ONE\nPort=104\nIP=127.0.0.1\n");
        PatientManagerMainWindow &window = fixture->open();
        QSignalSpy offered(&window, &PatientManagerMainWindow::notifySendSelectData);
        const MessageAnswers question(kivMessageBoxForm::AnswerCancel);
        window.onLoadSelecetPath(QStringLiteral("//"));
        QCOMPARE(question.count(), 1);
        QVERIFY(!window.isImporting());
        QCOMPARE(offered.size(), 0);
    }

    void forwardingNamesAllEntriesBeforeLoading()
    {
        fixture->writeIni(QStringLiteral("program/config/dicomsendservice.ini"),
            "[beta]\nAETitle=BETA\nPort=105\nIP=10.0.0.2\n[alpha]\nAETitle=ALPHA\nPort=104\n");
        const QString folder = fixture->makeSeries(QStringLiteral("series"), 2);
        QVERIFY(QDir(folder).mkpath(QStringLiteral("sub/below")));
        PatientManagerMainWindow &window = fixture->open();
        QSignalSpy offered(&window, &PatientManagerMainWindow::notifySendSelectData);
        bool importing = false;
        connect(&window, &PatientManagerMainWindow::notifySendSelectData, this,
            [&] { importing = importing || window.isImporting(); });
        window.onLoadSelecetPath(folder);
        QCOMPARE(offered.size(), 2);
        QVERIFY(!importing);

        QStringList expected{folder + QStringLiteral("/1.dcm"), folder + QStringLiteral("/2.dcm"),
            folder + QStringLiteral("/sub"), folder + QStringLiteral("/sub/below")};
        QStringList files = offered[0][0].toStringList();
        QCOMPARE(offered[1][0].toStringList(), files);
        files.sort();
        QCOMPARE(files, expected);
        QCOMPARE(offered[0].mid(1), (QVariantList{QStringLiteral("ALPHA"), QString(), 104}));
        QCOMPARE(offered[1].mid(1), (QVariantList{QStringLiteral("BETA"), QStringLiteral("10.0.0.2"), 105}));

        offered.clear();
        window.forwordData(expected.first());
        QCOMPARE(offered.value(0).value(0).toStringList(), QStringList{expected.first()});
        waitForImports(window);
    }

private:
    void waitForImports(const PatientManagerMainWindow &window) const
    {
        QTRY_VERIFY_WITH_TIMEOUT(!window.isImporting(), importWait);
    }
    QString storedPath() const
    {
        return fixture->index.query(QStringLiteral("SELECT FilePath FROM imageformat")).toString();
    }
};

PM_TEST_MAIN(WindowImportTest)
#include "windowimporttest.moc"
