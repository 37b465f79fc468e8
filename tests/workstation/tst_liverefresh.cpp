#include "dicomfilebuilder.h"
#include "frame.h"
#include "importcentre.h"
#include "liverefresh.h"
#include "ntableview.h"
#include "recordform.h"
#include "statuspanel.h"
#include "testmain.h"

#include <QAction>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSqlTableModel>
#include <QtTest>

namespace {

/// Longer than the watch needs to notice a change and the refresh to look again.
constexpr int longEnoughMs = 1500;

} // namespace

class LiveRefreshTest : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatAnotherProgramWrites()
    {
        const Frame frame(3);
        QTRY_VERIFY(frame.window->statusPanel()->countsText().contains(QStringLiteral("Patients 3")));
        frame.addFromOutside(QStringLiteral("Outside"));
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 4);
        QTRY_VERIFY(frame.window->statusPanel()->countsText().contains(QStringLiteral("Patients 4")));
    }

    void keepsSelectionAndScrollPosition()
    {
        const Frame frame(400);
        NTableView *view = frame.patientView();
        Frame::click(view, 200, QStringLiteral("PatientID"));
        const int scroll = view->verticalScrollBar()->value();
        QVERIFY(scroll > 0);
        const QVariant key = view->model()->index(200, 0).data();
        QCOMPARE(frame.studyView()->model()->rowCount(), 1);
        frame.addFromOutside(QStringLiteral("Outside"));
        QTRY_COMPARE(view->model()->rowCount(), 401);
        QCOMPARE(view->verticalScrollBar()->value(), scroll);
        QCOMPARE(view->selectionModel()->selectedRows().size(), 1);
        QCOMPARE(view->selectionModel()->selectedRows().first().data(), key);
        QCOMPARE(frame.studyView()->model()->rowCount(), 1);
    }

    void holdsWhileAnEditorIsOpenAndWhileItsTextIsUnsaved()
    {
        const Frame frame(3);
        NTableView *view = frame.patientView();
        Frame::click(view, 1, QStringLiteral("PatientID"));
        frame.action("actionEditCell")->trigger();
        auto *editor = view->findChild<QLineEdit *>();
        QVERIFY(editor);
        QTest::keyClicks(editor, QStringLiteral("typed"));
        expectHold(frame, QStringLiteral("First"), 3);
        QCOMPARE(view->findChild<QLineEdit *>(), editor);

        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(frame.patients()->hasUnsavedEdits());
        expectHold(frame, QStringLiteral("Second"), 3);
        QCOMPARE(view->currentIndex().data().toString(), QStringLiteral("typed"));

        frame.action("actionRevertall")->trigger();
        QTRY_COMPARE(view->model()->rowCount(), 5);
    }

    void showsTheRowsOfAnImport()
    {
        const Frame frame(1);
        const QTemporaryDir folder;
        writePatients(folder.path(), 40);
        QSignalSpy ended(frame.window->imports(), &ImportCentre::ended);
        frame.window->imports()->importUnattended({folder.path()});
        QVERIFY(frame.window->imports()->isRunning());
        QVERIFY(frame.window->imports()->activity().startsWith(QStringLiteral("Importing")));
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 41);
        QTRY_COMPARE(ended.count(), 1);
        QTRY_VERIFY(
            frame.window->statusPanel()->activityText().contains(QStringLiteral("Imported 40 of 40")));
    }

private:
    static void expectHold(const Frame &frame, const QString &name, int rows)
    {
        QSignalSpy refreshed(frame.window->liveRefresh(), &LiveRefresh::refreshed);
        frame.addFromOutside(name);
        QTRY_VERIFY(frame.window->liveRefresh()->isPending());
        QVERIFY(!refreshed.wait(longEnoughMs));
        QCOMPARE(frame.patientView()->model()->rowCount(), rows);
    }
};

PM_TEST_MAIN(LiveRefreshTest)
#include "tst_liverefresh.moc"
