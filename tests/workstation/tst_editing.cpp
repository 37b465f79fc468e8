#include "editcontroller.h"
#include "frame.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "testmain.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QSqlTableModel>
#include <QtTest>

#include <optional>

class EditingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_questions.emplace(kivMessageBoxForm::AnswerCancel); }
    void cleanup() { m_questions.reset(); }

    void f2EditsTheCurrentCellAndSubmitStoresIt()
    {
        const Frame frame(2);
        QVERIFY(!frame.action("actionSubmit")->isEnabled() && !frame.action("actionRevertall")->isEnabled());
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientID"));
        const QList<qlonglong> chosen = frame.patients()->selectedKeys();
        QCOMPARE(chosen.size(), 1);
        type(frame, frame.patientView(), QStringLiteral("PatientID"), QStringLiteral("NEW-ID"));
        QVERIFY(frame.action("actionSubmit")->isEnabled() && frame.action("actionRevertall")->isEnabled());
        QCOMPARE(storedId(frame), QStringLiteral("S1"));
        m_questions->answer = kivMessageBoxForm::AnswerOk;
        frame.action("actionSubmit")->trigger();
        QCOMPARE(storedId(frame), QStringLiteral("NEW-ID"));
        QCOMPARE(frame.patients()->selectedKeys(), chosen);
        QVERIFY(frame.patientView()->currentIndex().isValid());
        QVERIFY(!frame.action("actionSubmit")->isEnabled() && !frame.action("actionRevertall")->isEnabled());
    }

    void keysAndTheRightButtonChooseARecordAsClicksDo()
    {
        const Frame frame(3);
        NTableView *patients = frame.patientView();
        Frame::click(patients, 0, QStringLiteral("PatientID"));
        patients->setFocus();
        const auto shownPatient = [&] { return keyOf(frame.studyView(), QStringLiteral("patient_fk")); };
        const qlonglong first = shownPatient();
        QTest::keyClick(patients, Qt::Key_Down);
        QTRY_COMPARE(shownPatient(), keyOf(patients, QStringLiteral("pk"), 1));
        QVERIFY(shownPatient() != first);
        QTest::keyClick(patients, Qt::Key_End, Qt::ControlModifier);
        QTRY_COMPARE(shownPatient(), keyOf(patients, QStringLiteral("pk"), 2));
        QTest::keyClick(patients, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(frame.window->library()->selectedKeys().size(), 3);
        const QPoint second = patients->visualRect(patients->model()->index(1, 2)).center();
        QTest::mouseClick(patients->viewport(), Qt::RightButton, Qt::NoModifier, second);
        QCOMPARE(shownPatient(), keyOf(patients, QStringLiteral("pk"), 1));
        QTest::keyClick(patients, Qt::Key_Tab);
        QVERIFY(!patients->hasFocus());
        patients->setFocus();
        // Not where that would drop edits of the table below.
        frame.studies()->tableModel()->setData(
            frame.studyView()->model()->index(
                0, Frame::columnOf(frame.studyView(), QStringLiteral("StudyID"))),
            QStringLiteral("edited"));
        QTest::keyClick(patients, Qt::Key_Up);
        QVERIFY(frame.studies()->hasUnsavedEdits());
        QVERIFY(shownPatient() != first);
    }

    void changesNoKeyAndNoDerivedColumn_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<bool>("editable");
        QTest::newRow("name") << QStringLiteral("PatientName") << true;
        QTest::newRow("comments") << QStringLiteral("PatientComments") << true;
        QTest::newRow("key") << QStringLiteral("pk") << false;
        QTest::newRow("time of the last change") << QStringLiteral("updated_time") << false;
        QTest::newRow("count") << QStringLiteral("NumberOfPatientRelatedStudies") << false;
        QTest::newRow("upload state") << QStringLiteral("Status") << false;
    }
    void changesNoKeyAndNoDerivedColumn()
    {
        QFETCH(QString, column);
        QFETCH(bool, editable);
        const Frame frame(1);
        NTableView *view = frame.patientView();
        view->showColumn(Frame::columnOf(view, column));
        view->setFocus();
        view->setCurrentIndex(view->model()->index(0, Frame::columnOf(view, column)));
        QTest::keyClick(view, Qt::Key_F2);
        if (auto *editor = view->findChild<QLineEdit *>()) {
            QTest::keyClicks(editor, QStringLiteral("7"));
            QTest::keyClick(editor, Qt::Key_Return);
            QTRY_VERIFY(!frame.patients()->isEditing());
        }
        QCOMPARE(frame.patients()->hasUnsavedEdits(), editable);
    }

    void tabLeadsOverReadOnlyColumns()
    {
        const Frame frame(1);
        NTableView *view = frame.patientView();
        for (const char *column : {"PatientComments", "Status", "updated_time"}) {
            view->showColumn(Frame::columnOf(view, QLatin1String(column)));
        }
        view->setFocus();
        view->setCurrentIndex(
            view->model()->index(0, Frame::columnOf(view, QStringLiteral("PatientComments"))));
        QTest::keyClick(view, Qt::Key_F2);
        for (int step = 0; step < 3; ++step) {
            auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
            QVERIFY(editor);
            QTest::keyClicks(editor, QStringLiteral("x"));
            QTest::keyClick(editor, Qt::Key_Tab);
        }
        const auto text = [view](const char *column) {
            return view->model()->index(0, Frame::columnOf(view, QLatin1String(column))).data().toString();
        };
        QCOMPARE(text("PatientComments"), QStringLiteral("x"));
        QCOMPARE(text("Status"), QStringLiteral("未上传"));
        QVERIFY(!text("updated_time").contains(QLatin1Char('x')));
    }

    void refreshAsksBeforeItDropsEdits()
    {
        const Frame frame(2);
        frame.action("actionRefresh")->trigger();
        QCOMPARE(m_questions->count(), 0);
        type(frame, frame.patientView(), QStringLiteral("PatientID"), QStringLiteral("NEW-ID"));
        frame.action("actionRefresh")->trigger();
        QCOMPARE(m_questions->count(), 1);
        QVERIFY(frame.patients()->hasUnsavedEdits());
        m_questions->answer = kivMessageBoxForm::AnswerOk;
        frame.action("actionRefresh")->trigger();
        QVERIFY(!frame.patients()->hasUnsavedEdits());
        QCOMPARE(storedId(frame), QStringLiteral("S1"));
    }

    void anotherPatientAsksBeforeItDropsEditsOfStudies()
    {
        const Frame frame(2);
        Frame::click(frame.patientView(), 0, QStringLiteral("PatientID"));
        type(frame, frame.studyView(), QStringLiteral("StudyID"), QStringLiteral("typed"));
        Frame::click(frame.patientView(), 1, QStringLiteral("PatientID"));
        QCOMPARE(m_questions->count(), 1);
        QVERIFY(frame.studies()->hasUnsavedEdits());
        QCOMPARE(frame.patientView()->currentIndex().row(), 0);
        m_questions->answer = kivMessageBoxForm::AnswerOk;
        Frame::click(frame.patientView(), 1, QStringLiteral("PatientID"));
        QVERIFY(!frame.studies()->hasUnsavedEdits());
        QCOMPARE(frame.patientView()->currentIndex().row(), 1);
        QCOMPARE(frame.studyView()->model()->index(0, 1).data().toLongLong(), 2);
    }

private:
    static qlonglong keyOf(const NTableView *view, const QString &column, int row = 0)
    {
        const auto *model = qobject_cast<const QSqlTableModel *>(view->model());
        return model->index(row, model->fieldIndex(column)).data(Qt::EditRole).toLongLong();
    }
    static void type(const Frame &frame, NTableView *view, const QString &column, const QString &text)
    {
        view->setFocus();
        view->setCurrentIndex(view->model()->index(0, Frame::columnOf(view, column)));
        QTest::keyClick(view, Qt::Key_F2);
        auto *editor = view->findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(frame.action("actionSubmit")->isEnabled());
    }

    static QString storedId(const Frame &frame)
    {
        return frame.index.query(QStringLiteral("SELECT PatientID FROM patient WHERE pk = 1")).toString();
    }

    std::optional<MessageAnswers> m_questions;
};

PM_TEST_MAIN(EditingTest)
#include "tst_editing.moc"
