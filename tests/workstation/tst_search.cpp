#include "dicomfilebuilder.h"
#include "editcontroller.h"
#include "frame.h"
#include "importcentre.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientform.h"
#include "patientmanagermainwindow.h"
#include "searchbar.h"
#include "shownpatients.h"
#include "studyform.h"
#include "testmain.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSqlTableModel>
#include <QtTest>

namespace {

/// The frame and its search bar.
struct Searching
{
    explicit Searching(int patients)
        : frame(patients)
        , bar(frame.window->findChild<SearchBar *>())
        , text(bar->findChild<QLineEdit *>())
        , dates(bar->findChild<QComboBox *>())
        , shown(frame.window->shownPatients())
    {
        frame.index.addPatient(QStringLiteral("Müller^Jörg"), QStringLiteral("M1"), longAgo);
        frame.index.addPatient(QStringLiteral("Yamada^Tarou=山田^太郎"), QStringLiteral("Y1"), longAgo);
    }

    int rows() const { return frame.patientView()->model()->rowCount(); }
    QString selectedId() const
    {
        const NTableView *view = frame.patientView();
        const QModelIndexList selected = view->selectionModel()->selectedRows(
            Frame::columnOf(frame.patientView(), QStringLiteral("PatientID")));
        return selected.size() == 1 ? selected.first().data().toString() : QString();
    }
    void pick(DatePick wanted) const
    {
        dates->setCurrentIndex(dates->findData(int(wanted)));
        emit dates->activated(dates->currentIndex());
    }

    const QString longAgo = QStringLiteral("2015-05-05 10:00:00");
    Frame frame;
    SearchBar *bar;
    QLineEdit *text;
    QComboBox *dates;
    ShownPatients *shown;
};

} // namespace

/// The search bar in the frame.
class SearchTest : public QObject
{
    Q_OBJECT

private slots:
    void findsOverAllPatientsWhileTyping()
    {
        const Searching search(3);
        QCOMPARE(search.bar->pick(), DatePick::ArrivedToday);
        QCOMPARE(search.rows(), 3);
        QTest::keyClicks(search.text, QStringLiteral("jorg MUL"));
        QCOMPARE(search.bar->pick(), DatePick::AllDates);
        QTRY_COMPARE(search.rows(), 1);
        QTRY_COMPARE(search.bar->badge(), QStringLiteral("1 of 5"));
        QTest::keyClick(search.text, Qt::Key_Return);
        QTRY_COMPARE(search.selectedId(), QStringLiteral("M1"));

        QTest::keyClick(search.text, Qt::Key_Escape);
        QTRY_COMPARE(search.rows(), 5);
        QVERIFY(search.text->text().isEmpty());
        QCOMPARE(search.selectedId(), QStringLiteral("M1"));
        QVERIFY(search.frame.action("actionAllPatients")->isChecked());
        search.frame.action("actionFindPatients")->trigger();
        QTRY_VERIFY(search.text->hasFocus());
    }

    void keepsTheChosenPatientAsLongAsItIsFound()
    {
        const Searching search(12);
        Frame::click(search.frame.patientView(), 9, QStringLiteral("PatientID"));
        const QString chosen = search.selectedId();
        QCOMPARE(search.frame.studyView()->model()->rowCount(), 1);
        const PatientForm *form = search.frame.window->library()->getPatientForm();
        QSignalSpy reported(form, &PatientForm::selectPatient);
        QTest::keyClicks(search.text, chosen);
        QTRY_COMPARE(search.rows(), 1);
        QCOMPARE(search.selectedId(), chosen);
        QCOMPARE(search.frame.studyView()->model()->rowCount(), 1);
        QCOMPARE(reported.count(), 0);

        QTest::keyClicks(search.text, QStringLiteral(" nobody"));
        QTRY_COMPARE(search.rows(), 0);
        QCOMPARE(search.frame.studyView()->model()->rowCount(), 0);
        QVERIFY(search.frame.window->library()->selectedKeys().isEmpty());
        search.text->clear();
        emit search.bar->textWanted({});
        QTRY_COMPARE(search.rows(), 14);
        QCOMPARE(search.selectedId(), QString());
    }

    void picksByStudyDate()
    {
        const Searching search(2);
        const QString today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        search.frame.index.query(
            QStringLiteral("UPDATE generalstudy SET StudyDate = ? WHERE StudyInstanceUID = '1.2.1'"),
            {today});
        search.pick(DatePick::Today);
        QTRY_COMPARE(search.rows(), 1);
        search.pick(DatePick::Yesterday);
        QTRY_COMPARE(search.rows(), 0);
        search.pick(DatePick::Week);
        QTRY_COMPARE(search.rows(), 1);
        search.pick(DatePick::NoDate);
        QTRY_COMPARE(search.rows(), 1);
        QTest::keyClicks(search.text, QStringLiteral("0002"));
        QCOMPARE(search.bar->pick(), DatePick::NoDate);
        QTRY_COMPARE(search.bar->badge(), QStringLiteral("1 of 4"));
        search.frame.action("actionTodaysPatients")->trigger();
        QCOMPARE(search.bar->pick(), DatePick::ArrivedToday);
        QVERIFY(search.bar->text().isEmpty());
        QCOMPARE(search.rows(), 2);
    }

    void triesAgainWhatCannotBeRead()
    {
        const Searching search(1);
        const QString later = search.frame.index.folder() + QStringLiteral("/later.db");
        PatientFinder finder(later);
        QSignalSpy unreadable(&finder, &PatientFinder::unreadable);
        QSignalSpy answered(&finder, &PatientFinder::answered);
        finder.ask({});
        QTRY_VERIFY(!unreadable.isEmpty());
        search.frame.index.query(QStringLiteral("VACUUM INTO '%1'").arg(later));
        QTRY_COMPARE(answered.count(), 1);
    }

    /// What comes in is found, whoever writes it.
    void followsTheIndex()
    {
        const Searching search(1);
        QTest::keyClicks(search.text, QStringLiteral("comet"));
        QTRY_COMPARE(search.rows(), 0);
        search.frame.addFromOutside(QStringLiteral("Comet^Outside"));
        QTRY_COMPARE(search.rows(), 1);
        const QTemporaryDir folder;
        DicomFileBuilder()
            .patient(QStringLiteral("C2"), QStringLiteral("Comet^Imported"))
            .uids(QStringLiteral("1.9"), QStringLiteral("1.9.1"), QStringLiteral("1.9.1.1"))
            .write(folder.filePath(QStringLiteral("a.dcm")));
        search.frame.window->imports()->importUnattended({folder.path()});
        QTRY_COMPARE(search.rows(), 2);
        search.frame.index.query(
            QStringLiteral("UPDATE patient SET PatientName = 'Planet' WHERE PatientID = 'C2'"));
        QTRY_COMPARE(search.rows(), 1);
        search.frame.index.query(QStringLiteral("DELETE FROM patient WHERE PatientName LIKE 'Comet%'"));
        QTRY_COMPARE(search.rows(), 0);
    }

    void givesWayToOtherSearches()
    {
        const Searching search(3);
        QTest::keyClicks(search.text, QStringLiteral("start"));
        QTRY_COMPARE(search.rows(), 3);
        PatientForm *form = search.frame.window->library()->getPatientForm();
        form->onSearchPatient(QStringLiteral("PatientID = 'Y1'"));
        QCOMPARE(search.bar->pick(), DatePick::Other);
        QVERIFY(search.bar->text().isEmpty());
        QCOMPARE(search.rows(), 1);
        search.frame.addFromOutside(QStringLiteral("Start^Later")); // would have been found
        QTRY_COMPARE(search.bar->badge(), QStringLiteral("1 of 6"));
        QTest::keyClicks(search.text, QStringLiteral("s"));
        QTRY_COMPARE(search.rows(), 4);
        form->onPatient({1, 2});
        QCOMPARE(search.bar->pick(), DatePick::Other);
        form->onShowPatient();
        QCOMPARE(search.bar->pick(), DatePick::AllDates);
    }

    void asksOnceBeforeItDropsEdits()
    {
        const Searching search(2);
        QAbstractItemModel *model = search.frame.patientView()->model();
        const QModelIndex cell =
            model->index(0, Frame::columnOf(search.frame.patientView(), QStringLiteral("PatientComments")));
        model->setData(cell, QStringLiteral("typed"));
        QVERIFY(search.frame.patients()->hasUnsavedEdits());
        MessageAnswers questions(kivMessageBoxForm::AnswerCancel);
        QTest::keyClicks(search.text, QStringLiteral("M"));
        QCOMPARE(search.text->text(), QString());
        QCOMPARE(cell.data().toString(), QStringLiteral("typed"));
        QCOMPARE(search.bar->pick(), DatePick::ArrivedToday);

        questions.answer = kivMessageBoxForm::AnswerOk;
        QTest::keyClicks(search.text, QStringLiteral("Mu"));
        QTRY_COMPARE(search.rows(), 1);
        QVERIFY(!search.frame.patients()->hasUnsavedEdits());
        QCOMPARE(questions.count(), 2);
    }
};

PM_TEST_MAIN(SearchTest)
#include "tst_search.moc"
