#include "frame.h"
#include "indexwatcher.h"
#include "messageanswers.h"
#include "patientmanagermainwindow.h"
#include "patientqueryform.h"
#include "patienttreeform.h"
#include "picturecontroller.h"
#include "qpatient.h"
#include "querypaneldock.h"
#include "recordform.h"
#include "statuspanel.h"
#include "testmain.h"
#include "thumbnailmodel.h"
#include "thumbnailview.h"
#include "treecontroller.h"

#include <QAbstractButton>
#include <QAction>
#include <QDateEdit>
#include <QDockWidget>
#include <QLineEdit>
#include <QSettings>
#include <QSqlTableModel>
#include <QtTest>

/// The query panel in the frame.
class QueryPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QSettings().clear();
        frame = std::make_unique<Frame>(2);
    }
    void cleanup() { frame.reset(); }

    void findsPeopleAsTheyAreTyped()
    {
        frame->index.addPatient(QStringLiteral("O'Brien^Mary"), QStringLiteral("1"));
        frame->index.addPatient(QStringLiteral("Yamada^Tarou=山田^太郎"), QStringLiteral("2"),
            QStringLiteral("2003-01-01 12:00:00"));
        frame->window->library()->onShowTable(QStringLiteral("imageformat"));
        search(QStringLiteral("o'brien"));
        QCOMPARE(listed(), 1);
        QVERIFY(firstName().startsWith(QLatin1String("O'Brien")));
        QVERIFY2(said().contains(QLatin1String("found 1 patient")), qPrintable(said()));
        for (const RecordForm *form : frame->window->forms()) {
            QVERIFY(form->isVisible());
        }
        for (const char *name : {"yamada", "太郎 山田", "tarou yamada"}) {
            search(QString::fromUtf8(name));
            QCOMPARE(listed(), 1);
            QVERIFY(firstName().contains(QLatin1String("Yamada")));
        }
        part("InPatientNoCheck")->click();
        part<QDateEdit>("InPatientNo")->setDate({2003, 1, 2});
        part("search")->click();
        QCOMPARE(listed(), 0);
        part("InPatientNoCheck")->click();
        part("OutPatientCheck")->click();
        part<QDateEdit>("OutPatient")->setDate({2003, 1, 1});
        part("search")->click();
        QCOMPARE(listed(), 1);
    }

    void daysFollowTheIndexUntilTheyAreChosen()
    {
        const auto *first = part<QDateEdit>("InPatientNo");
        const auto *last = part<QDateEdit>("OutPatient");
        QCOMPARE(last->date(), QDate::currentDate());
        QCOMPARE(first->date(), QDate::currentDate());
        QVERIFY(!first->isEnabled() && !last->isEnabled());
        frame->index.addPatient(
            QStringLiteral("A^B"), QStringLiteral("9"), QStringLiteral("2001-05-06 07:08:09"));
        frame->addFromOutside(QStringLiteral("C^D"));
        QTRY_COMPARE(first->date(), QDate(2001, 5, 6));
        QCOMPARE(first->text(), QStringLiteral("2001-05-06"));
        part("InPatientNoCheck")->click();
        part("OutPatientCheck")->click();
        QVERIFY(first->isEnabled() && last->isEnabled());
        frame->index.query(QStringLiteral("UPDATE patient SET updated_time = '2000-01-01 00:00:00'"));
        QSignalSpy seen(frame->window->indexWatcher(), &IndexWatcher::changed);
        frame->addFromOutside(QStringLiteral("E^F"));
        QVERIFY(seen.wait());
        QCOMPARE(first->date(), QDate(2001, 5, 6));
    }

    void advancedInquiryTakesTheTablesAndGivesThemBack()
    {
        search(QStringLiteral("0002"));
        QCOMPARE(listed(), 1);
        QAction *tree = frame->window->tree()->toggleAction();
        QVERIFY(!tree->isChecked());
        part("AdvanceInquiry")->click();
        QVERIFY(tree->isChecked());
        QCOMPARE(listed(), 0);
        part("AdvanceInquiry")->click();
        QVERIFY(!tree->isChecked());
        QCOMPARE(listed(), 1);
        // Whoever closes the tree takes the button up with it.
        part("AdvanceInquiry")->click();
        frame->window->library()->onShowTable(QStringLiteral("imageformat"));
        tree->trigger();
        QVERIFY(!part("AdvanceInquiry")->isChecked() && part("search")->isEnabled());
        QCOMPARE(listed(), 1);
        QVERIFY(frame->patients()->isVisible() && frame->studies()->isVisible());
        // A tree that stood there before stays.
        tree->trigger();
        part("AdvanceInquiry")->click();
        part("AdvanceInquiry")->click();
        QVERIFY(tree->isChecked());
    }

    void advancedInquiryGivesWayToOtherSearches()
    {
        search(QStringLiteral("0002"));
        QVERIFY(said().contains(QLatin1String("found 1 patient")));
        part("AdvanceInquiry")->click();
        QVERIFY(said().contains(QLatin1String("patient tree")));
        frame->action("actionAllPatients")->trigger();
        QTRY_COMPARE(listed(), 2);
        QVERIFY(!part("AdvanceInquiry")->isChecked() && part("search")->isEnabled());
        QVERIFY(!frame->window->tree()->toggleAction()->isChecked());
        QVERIFY2(said().startsWith(QLatin1String("Ready")), qPrintable(said()));
        search(QStringLiteral("0001"));
        frame->action("actionTodaysPatients")->trigger();
        QVERIFY2(said().startsWith(QLatin1String("Ready")), qPrintable(said()));
    }

    /// The chosen patient and the pictures are those of a row that is listed, or none.
    void nobodyIsChosenAfterwards()
    {
        PatientManagerMainWindow *library = frame->window->library();
        const QAbstractItemModel *pictures = frame->window->pictures()->view()->model();
        const auto choose = [&] {
            QTRY_VERIFY(listed() > 0);
            Frame::click(frame->patientView(), 0, QStringLiteral("PatientName"));
            QTRY_COMPARE(pictures->rowCount(), 1);
        };
        const auto isNobody = [&] {
            return pictures->rowCount() == 0 && library->selectedKeys().isEmpty()
                && library->getPatient()->getPk() <= 0;
        };
        choose();
        search(QStringLiteral("0002"));
        QTRY_VERIFY(isNobody());
        choose();
        part("AdvanceInquiry")->click();
        QTRY_VERIFY(isNobody());
        emit library->getPatientTreeForm()->selectPatientPks({1});
        choose();
        part("AdvanceInquiry")->click();
        QTRY_VERIFY(isNobody());
        QCOMPARE(listed(), 1);
    }

    void unsavedEditsStay()
    {
        QSqlTableModel *model = frame->patients()->tableModel();
        QVERIFY(model->setData(
            model->index(0, model->fieldIndex(QStringLiteral("PatientComments"))), QStringLiteral("kept")));
        MessageAnswers question(kivMessageBoxForm::AnswerCancel);
        search(QStringLiteral("0002"));
        part("AdvanceInquiry")->click();
        QVERIFY(!part("AdvanceInquiry")->isChecked() && part("search")->isEnabled());
        QCOMPARE(listed(), 2);
        QVERIFY(frame->patients()->hasUnsavedEdits());
        question.answer = kivMessageBoxForm::AnswerOk;
        search(QStringLiteral("0002"));
        QCOMPARE(listed(), 1);
    }

    void sectionsAreKept()
    {
        auto *panelDock = frame->window->findChild<QDockWidget *>(QLatin1String(QueryPanelDock::dockName));
        frame->window->restoreLayout(); // only what was restored is kept
        QVERIFY(panelDock->isVisible() && !panelDock->isFloating());
        QCOMPARE(frame->window->dockWidgetArea(panelDock), Qt::RightDockWidgetArea);
        const int before = dock()->thumbnailBody()->height();
        part("btApplicationMinimize")->click();
        QTRY_VERIFY(dock()->thumbnailBody()->height() > before); // the thumbnails take what is free
        part("btThumbnailMinimize")->click();
        part("btThumbnailMinimize")->click();
        QTRY_VERIFY(dock()->thumbnailBody()->height() > before);
        frame->action("actionQueryPanel")->trigger();
        QVERIFY(panelDock->isHidden());
        frame->window->close();
        frame.reset();
        frame = std::make_unique<Frame>(0);
        frame->window->restoreLayout();
        QVERIFY(part<QWidget>("ApplicationLayoutWidget")->isHidden());
        QVERIFY(!dock()->thumbnailBody()->isHidden() && !part<QWidget>("QueryItemWidget")->isHidden());
        QVERIFY(frame->window->findChild<QDockWidget *>(QLatin1String(QueryPanelDock::dockName))->isHidden());
    }

private:
    template <typename Widget = QAbstractButton>
    Widget *part(const char *name) const
    {
        return panel()->findChild<Widget *>(QLatin1String(name));
    }
    QueryPanelDock *dock() const { return frame->window->findChild<QueryPanelDock *>(); }
    PatientQueryForm *panel() const { return dock()->panel(); }
    QString said() const { return frame->window->statusPanel()->activityText(); }
    int listed() const { return frame->patients()->tableModel()->rowCount(); }
    QString firstName() const
    {
        const QSqlTableModel *model = frame->patients()->tableModel();
        return model->index(0, model->fieldIndex(QStringLiteral("PatientName"))).data().toString();
    }
    void search(const QString &name) const
    {
        part<QLineEdit>("PatientName")->setText(name);
        QTest::keyClick(part<QLineEdit>("PatientName"), Qt::Key_Return);
    }

    std::unique_ptr<Frame> frame;
};

PM_TEST_MAIN(QueryPanelTest)
#include "tst_querypanel.moc"
