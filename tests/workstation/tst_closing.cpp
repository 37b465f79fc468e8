#include "databasesetform.h"
#include "dicomfilebuilder.h"
#include "frame.h"
#include "importcentre.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "recordform.h"
#include "runningcorrection.h"
#include "testmain.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSqlTableModel>
#include <QtTest>

class ClosingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { writePatients(m_files.path(), fileCount); }

    void staysWhereTheUserKeepsTheImport()
    {
        const Frame frame;
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        frame.window->imports()->importUnattended({m_files.path()});
        QVERIFY(!frame.window->close());
        QCOMPARE(questions.count(), 1);
        QVERIFY(frame.window->isVisible() && frame.window->isEnabled());
        QTRY_VERIFY(!frame.window->imports()->isRunning());
        QCOMPARE(images(frame), fileCount);
    }

    void stopsTheImportAndLosesNothing()
    {
        Frame frame;
        MessageAnswers questions(kivMessageBoxForm::AnswerOk);
        QSignalSpy closed(frame.window.get(), &WorkstationWindow::closed);
        frame.window->imports()->importUnattended({m_files.path()});
        frame.window->close();
        QCOMPARE(questions.count(), 1);
        QTRY_COMPARE(closed.count(), 1);
        QVERIFY(!frame.window->isVisible());
        frame.window.reset();
        const int kept = images(frame);
        const ImportReport report = frame.index.import({m_files.path()});
        QCOMPARE(report.of(FileVerdict::New), qint64(fileCount - kept));
        QCOMPARE(images(frame), fileCount);
    }

    void asksBeforeWorkOnTheIndexIsStopped()
    {
        const Frame frame(1);
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        const auto *form = DataBaseSetForm::instance();
        form->findChild<QPushButton *>(QStringLiteral("check"))->click();
        QVERIFY(!frame.window->close());
        QCOMPARE(questions.count(), 1);
        QTRY_VERIFY(!DataBaseSetForm::isAnyWorkRunning());
        QVERIFY(frame.window->close());
        QCOMPARE(questions.count(), 1);
    }

    /// What is being stored in a service comes to its end before the program does.
    void waitsForACorrection()
    {
        const Frame frame(1);
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        bool isStopped = false;
        auto correction = std::make_unique<RunningCorrection>([&] { isStopped = true; });
        QVERIFY(!frame.window->close());
        QCOMPARE(questions.count(), 1);
        QVERIFY(!isStopped);
        questions.answer = kivMessageBoxForm::AnswerOk;
        QSignalSpy closed(frame.window.get(), &WorkstationWindow::closed);
        QVERIFY(!frame.window->close());
        QVERIFY(isStopped);
        correction.reset();
        QTRY_COMPARE(closed.count(), 1);
    }

    void asksBeforeUnsavedEditsAreLost()
    {
        const Frame frame(1);
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        NTableView *view = frame.patientView();
        Frame::click(view, 0, QStringLiteral("PatientID"));
        QTest::keyClick(view, Qt::Key_F2);
        auto *editor = view->findChild<QLineEdit *>();
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("typed"));
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(frame.patients()->hasUnsavedEdits());
        QVERIFY(!frame.window->close());
        QCOMPARE(questions.count(), 1);
        QVERIFY(frame.patients()->hasUnsavedEdits());
        questions.answer = kivMessageBoxForm::AnswerOk;
        QVERIFY(frame.window->close());
    }

private:
    static constexpr int fileCount = 800;

    static int images(const Frame &frame) { return frame.index.count("imageformat"); }

    QTemporaryDir m_files;
};

PM_TEST_MAIN(ClosingTest)
#include "tst_closing.moc"
