#include "deletionleftovers.h"
#include "dicomfilebuilder.h"
#include "frame.h"
#include "messageanswers.h"
#include "namedcontrols.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "sessionservices.h"
#include "statuspanel.h"
#include "storecare.h"
#include "testmain.h"

#include <QAction>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSqlTableModel>
#include <QTableWidget>
#include <QtTest>

#include <optional>

/// What the host adds to a deletion.
class DeletionTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_answers.emplace();
        m_asked = 0;
    }
    void cleanup() { m_answers.reset(); }

    void theTextBesideAnActionNamesWhatItTouches()
    {
        const Frame frame(3);
        const QAction *action = frame.action("actionDelete");
        const QString before = action->statusTip();
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientID"));
        QTRY_COMPARE(action->statusTip(), QStringLiteral("Delete 1 patient"));
        const auto isStrong = [](const QWidget *view) {
            return view->palette().highlight().color() == QPalette().highlight().color();
        };
        QVERIFY(isStrong(frame.patientView()) && !isStrong(frame.studyView()));
        Frame::click(frame.studyView(), 0, QStringLiteral("StudyDate"));
        QTRY_COMPARE(action->statusTip(), QStringLiteral("Delete 1 study"));
        QVERIFY(!isStrong(frame.patientView()) && isStrong(frame.studyView()));
        frame.studyView()->clearSelection();
        frame.patientView()->selectAll();
        QTRY_COMPARE(action->toolTip(), QStringLiteral("Delete 3 patients"));
        QCOMPARE(frame.action("actionSaveDicom")->statusTip(), QStringLiteral("Export 3 patients"));
        frame.patientView()->clearSelection();
        QTRY_COMPARE(action->statusTip(), before);
    }

    void whatIsNotShownIsAskedForOnceMore()
    {
        const Frame frame(3);
        Frame::click(frame.patientView(), 1, QStringLiteral("PatientID"));
        frame.window->library()->onShowTable(QStringLiteral("generalstudy"));
        frame.studyView()->clearSelection();
        kivMessageBoxForm::setAnswerer([this](const kivMessageBoxForm::Request &) {
            return ++m_asked == 1 ? kivMessageBoxForm::AnswerOk : kivMessageBoxForm::AnswerCancel;
        });
        frame.action("actionDelete")->trigger();
        QCOMPARE(m_asked, 2);
        QCOMPARE(frame.index.count("patient"), 3);
    }

    void aSelectionThatMovesDuringTheQuestionIsNotDeleted()
    {
        const Frame frame(3);
        Frame::click(frame.patientView(), 1, QStringLiteral("PatientID"));
        kivMessageBoxForm::setAnswerer([this, &frame](const kivMessageBoxForm::Request &) {
            frame.patientView()->selectRow(2);
            ++m_asked;
            return kivMessageBoxForm::AnswerOk;
        });
        frame.action("actionDelete")->trigger();
        QCOMPARE(m_asked, 2); // the second one says so
        QCOMPARE(frame.index.count("patient"), 3);
    }

    void imagesThatWaitToBeSentAreAskedFor()
    {
        SessionServices services;
        Frame frame(2);
        frame.window.reset();
        frame.window = std::make_unique<WorkstationWindow>(&services);
        frame.window->show();
        const QString path = frame.index.folder() + QStringLiteral("/1.dcm");
        DicomFileBuilder().write(path);
        frame.index.query(QStringLiteral("UPDATE imageformat SET FilePath = ? WHERE pk = 1"), {path});
        SendLabel label;
        label.destination = QStringLiteral("Archive");
        SendService *sends = services.sending();
        const auto node = DicomNode{QStringLiteral("AWAY"), QStringLiteral("127.0.0.1"), 1};
        const qint64 job = sends->enqueue({path}, node, SendSource::Dialog, label);
        QTRY_COMPARE(sends->job(job).total, 1);
        QString question;
        kivMessageBoxForm::setAnswerer([this, &question](const kivMessageBoxForm::Request &request) {
            question = request.text;
            return ++m_asked == 1 ? kivMessageBoxForm::AnswerOk : kivMessageBoxForm::AnswerCancel;
        });
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientID"));
        // A file that stays where it is can still be sent.
        const auto askedAbout = [&](const QString &marker) {
            frame.index.query(QStringLiteral("UPDATE imageformat SET IrradiationEventUID = ?"), {marker});
            m_asked = 0;
            frame.action("actionDelete")->trigger();
            return m_asked == 2 && question.contains(QLatin1String("Archive"));
        };
        QVERIFY2(askedAbout(QStringLiteral("copy")), qPrintable(question));
        QCOMPARE(frame.index.count("patient"), 2);
        QVERIFY(!askedAbout(QString()));
        QCOMPARE(frame.index.count("patient"), 1);
    }

    void theKeyDeletesWhatIsSelectedAndTheTablesFollow()
    {
        const Frame frame(3);
        frame.window->library()->onUpLoadFlag(true); // of an upload that has ended
        Frame::click(frame.patientView(), 1, QStringLiteral("PatientID"));
        frame.window->activateWindow();
        frame.patientView()->setFocus();
        QTest::keyClick(frame.patientView(), Qt::Key_Delete);
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 2);
        QCOMPARE(m_answers->count(), 1);
        QCOMPARE(frame.index.query(QStringLiteral("SELECT group_concat(PatientID) FROM patient")).toString(),
            QStringLiteral("S1,S3"));
        QCOMPARE(frame.studyView()->model()->rowCount(), 0);
    }

    void editsAreAskedForBeforeRecordsGo()
    {
        const Frame frame(2);
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientID"));
        const int column = Frame::columnOf(frame.patientView(), QStringLiteral("PatientComments"));
        QAbstractItemModel *rows = frame.patientView()->model();
        QVERIFY(rows->setData(rows->index(0, column), QStringLiteral("edited")));
        m_answers->answer = kivMessageBoxForm::AnswerCancel;
        frame.action("actionDelete")->trigger();
        QCOMPARE(m_answers->count(), 1);
        QVERIFY(frame.patients()->hasUnsavedEdits());
        m_answers->answer = kivMessageBoxForm::AnswerOk;
        frame.action("actionDelete")->trigger();
        QCOMPARE(m_answers->count(), 3);
        QVERIFY(!frame.patients()->hasUnsavedEdits());
        QCOMPARE(frame.index.count("patient"), 1);
    }

    /// A folder where a file should be cannot be removed, by anybody.
    void whatIsLeftIsOfferedAgain()
    {
        const Frame frame(1);
        const QString path = frame.index.folder() + QStringLiteral("/store/p/t/s/1.dcm");
        QVERIFY(QDir().mkpath(path));
        frame.index.query(
            QStringLiteral("UPDATE imageformat SET IrradiationEventUID = 'copy', FilePath = ?"), {path});
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientID"));
        frame.action("actionDelete")->trigger();
        const auto *left = frame.window->findChild<DeletionLeftovers *>();
        QVERIFY(left && left->isVisible());
        const auto *table = left->findChild<QTableWidget *>();
        QCOMPARE(table->item(0, 0)->text(), path);
        QVERIFY(!table->item(0, 1)->text().isEmpty());
        QCOMPARE(unnamedControl(*left), QString());
        auto *again = left->findChild<QPushButton *>();
        const QString first = left->findChild<QLabel *>()->text();
        again->click();
        QCOMPARE(table->rowCount(), 1);
        QVERIFY(left->findChild<QLabel *>()->text() != first);
        QVERIFY(frame.window->statusPanel()->activityText().contains(QLatin1String("could not be removed")));
        QVERIFY(QDir().rmdir(path));
        again->click();
        QCOMPARE(table->rowCount(), 0);
        QVERIFY(!again->isEnabled());
    }

    void aStartFinishesWhatWasInterrupted()
    {
        Frame frame(2);
        frame.window.reset();
        frame.index.query(QStringLiteral("INSERT INTO deletion (Level, RecordKeys, EveryFile, LastImage) "
                                         "VALUES (0, '[1]', 0, 2)"));
        const QString store = frame.index.folder() + QStringLiteral("/store/");
        const QString stray = store + QStringLiteral("p-0123456789/1.1/1.2/1.3.dcm");
        const QString identity = frame.index.query(QStringLiteral("SELECT Identity FROM store")).toString();
        QVERIFY(QDir().mkpath(QFileInfo(stray).path()));
        for (const auto &[path, text] :
            {std::make_pair(stray, QString()), std::make_pair(store + QStringLiteral(".index"), identity)}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text.toLatin1()) >= 0);
        }
        frame.index.query(
            QStringLiteral("UPDATE imageformat SET IrradiationEventUID = 'copy', FilePath = ? || pk"),
            {store});
        frame.window = std::make_unique<WorkstationWindow>();
        frame.window->show();
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 1);
        QTRY_VERIFY(!QFile::exists(stray));
        QTRY_VERIFY(frame.window->statusPanel()->activityText().contains(QStringLiteral("store")));
    }

    /// The care has a connection of its own, which may fail where the window's stands.
    void aCareThatCannotOpenTheIndexIsTold()
    {
        const Frame frame(1);
        const QString path = frame.index.folder() + QStringLiteral("/gone/index.db");
        StoreCare care;
        QSignalSpy failed(&care, &StoreCare::failed);
        connect(&care, &StoreCare::failed, frame.window->findChild<StoreCare *>(), &StoreCare::failed);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Interrupted deletions")));
        care.begin(path);
        QTRY_COMPARE(failed.count(), 1);
        QTRY_VERIFY2(frame.window->statusPanel()->activityText().contains(path),
            qPrintable(frame.window->statusPanel()->activityText()));
    }

private:
    int m_asked = 0;
    std::optional<MessageAnswers> m_answers;
};

PM_TEST_MAIN(DeletionTest)
#include "tst_deletion.moc"
