#include "namedcontrols.h"
#include "patientqueryform.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QAction>
#include <QDateEdit>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QtTest>

#include <optional>

class PatientQueryFormTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { allowWarningsOfNamedSlots(); }
    void init()
    {
        index.emplace();
        form = std::make_unique<PatientQueryForm>();
        QFont desktop = form->font();
        desktop.setPointSize(10);
        form->setFont(desktop);
        form->resize(300, 800);
        form->show();
        QVERIFY(QTest::qWaitForWindowExposed(form.get()));
    }
    void cleanup()
    {
        form.reset();
        index.reset();
    }

    void checkedRowsMakeTheFilter_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("patientId");
        QTest::addColumn<QString>("filter");
        const QString days = QStringLiteral("updated_time >= '2015-04-21'&&updated_time <= '2015-04-24'");
        QTest::newRow("the name, as it is at first") << "Li" << QString() << "PatientName = 'Li'&&" + days;
        QTest::newRow("the ID alone") << QString() << "123"
                                      << "PatientID = '123'&&" + days;
        QTest::newRow("both, exactly as typed")
            << "O'Brien %1%2"
            << "1&&2"
            << "PatientName = 'O'Brien %1%2'&&PatientID = '1&&2'&&" + days;
        QTest::newRow("neither") << QString() << QString() << days;
    }

    void checkedRowsMakeTheFilter()
    {
        QFETCH(QString, name);
        QFETCH(QString, patientId);
        QSignalSpy searched(form.get(), &PatientQueryForm::searchPatient);
        QTest::keyClicks(part<QLineEdit>("PatientName"), name);
        if (name.isEmpty()) {
            click("NameCheck");
        }
        if (!patientId.isEmpty()) {
            click("PatientIDCheck");
            QTest::keyClicks(part<QLineEdit>("PatientID"), patientId);
        }
        click("search");
        QTEST(searched.value(0).value(0).toString(), "filter");
    }

    void checkBoxesEnableTheirEditors()
    {
        const auto follows = [this](const char *box, const char *editor) {
            const bool before = part<QWidget>(editor)->isEnabled();
            click(box);
            return part<QWidget>(editor)->isEnabled() != before;
        };
        QVERIFY(part<QWidget>("PatientName")->isEnabled() && !part<QWidget>("PatientID")->isEnabled());
        QVERIFY(follows("NameCheck", "PatientName") && follows("PatientIDCheck", "PatientID"));
        QVERIFY(follows("IDCardNumCheck", "IDCardNum") && follows("IDCardNumCheck", "IDCardNum"));
        // The days are the host's to connect.
        QVERIFY(!follows("InPatientNoCheck", "InPatientNo") && !follows("OutPatientCheck", "OutPatient"));
        QVERIFY(QMetaObject::invokeMethod(form.get(), "enableInPatientNo", Q_ARG(bool, true)));
        QVERIFY(QMetaObject::invokeMethod(form.get(), "enableOutPatientNo", Q_ARG(bool, true)));
        QVERIFY(part<QWidget>("InPatientNo")->isEnabled() && part<QWidget>("OutPatient")->isEnabled());
    }

    void advancedInquiryHoldsTheSearch()
    {
        QCOMPARE(signalsOf("AdvanceInquiry"),
            (QStringList{QStringLiteral("IsChecked true"), QStringLiteral("advanceInquiry true")}));
        QCOMPARE(signalsOf("search"), QStringList());
        QCOMPARE(signalsOf("AdvanceInquiry"),
            (QStringList{QStringLiteral("IsChecked false"), QStringLiteral("advanceInquiry false")}));
        QCOMPARE(signalsOf("search"), QStringList{QStringLiteral("searchPatient")});
        QSignalSpy loading(form.get(), &PatientQueryForm::loadDir);
        QVERIFY(QMetaObject::invokeMethod(form.get(), "on_LoadDir_clicked"));
        QCOMPARE(loading.value(0).value(0).toBool(), true);
    }

    void launchersTellWhatTheyStart()
    {
        QCOMPARE(signalsOf("pushButton_joint"), QStringList{QStringLiteral("jointStart")});
        QCOMPARE(signalsOf("pushButton_regist"), QStringList{QStringLiteral("compareStart")});
        QCOMPARE(signalsOf("pushButton_swi"), QStringList{QStringLiteral("swiStart")});
        QCOMPARE(signalsOf("pushButton_vessel"), QStringList{QStringLiteral("vesselStart")});
        QCOMPARE(signalsOf("pushButton_infarction"), QStringList{QStringLiteral("brainSegment false")});
        part<QPushButton>("pushButton_infarction")->setCheckable(true);
        QCOMPARE(signalsOf("pushButton_infarction"), QStringList{QStringLiteral("brainSegment true")});
        for (const char *inert : {"pushButton_swim", "pushButton_ich", "pushButton_flow"}) {
            QCOMPARE(signalsOf(inert), QStringList());
        }
    }

    void sectionsCollapseToTheirHeaders()
    {
        const char *const names[][4]{
            {"btQueryMinimize", "PatientQueryWidget", "QueryFormTextWidget2", "QueryItemWidget"},
            {"btThumbnailMinimize", "ThumbnailWidget", "QueryFormTextWidget4", "QueryWidget"},
            {"btApplicationMinimize", "ApplicationWidget", "QueryFormTextWidget3",
                "ApplicationLayoutWidget"}};
        for (const auto &[button, section, header, body] : names) {
            const int bodyHeight = part<QWidget>(body)->height();
            const int headerHeight = part<QWidget>(header)->height();
            click(button);
            QVERIFY(part<QWidget>(body)->isHidden());
            QTRY_COMPARE(part<QWidget>(section)->height(), headerHeight);
            click(button);
            QTRY_COMPARE(part<QWidget>(section)->height(), headerHeight + bodyHeight);
            QVERIFY(part<QWidget>(body)->isVisible());
        }
    }

    void floatsAndDocksByTitleAndButton()
    {
        const auto doubleClick = [this](const char *name) {
            auto *target = part<QWidget>(name);
            QTest::mouseDClick(target, Qt::LeftButton, Qt::NoModifier, target->rect().center());
        };
        doubleClick("PatientQueryLabel"); // without a dock nothing happens
        click("dockButton");
        QMainWindow window;
        auto *dock = new QDockWidget(&window);
        PatientQueryForm *panel = form.release();
        dock->setWidget(panel);
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        panel->setDockWidget(dock);
        panel->setDockWidget(dock);
        window.show();
        form.reset(panel); // for part(); released again below
        QVERIFY(!dock->titleBarWidget());
        click("dockButton");
        QVERIFY(dock->isFloating() && !dock->titleBarWidget());
        click("dockButton");
        QVERIFY(dock->isFloating());
        doubleClick("PatientQueryLabel");
        QVERIFY(!dock->isFloating() && dock->titleBarWidget());
        doubleClick("ThumbnailLabel");
        QVERIFY(!dock->isFloating());
        doubleClick("PatientQueryLabel");
        QVERIFY(dock->isFloating() && !dock->titleBarWidget());
        dock->setFloating(false); // as by the dock's own title bar
        QVERIFY(dock->titleBarWidget());
        QCOMPARE(dock->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).count(panel), 1);
        panel->setDockWidget(nullptr);
        click("dockButton");
        QVERIFY(!dock->isFloating());
        panel->setParent(nullptr);
    }

    void everyControlHasItsNameAndRoom()
    {
        QCOMPARE(unnamedControl(*form), QString());
        QAction action;
        form->onAction(&action);
        QVERIFY(form->actions().contains(&action));
        form->onAction(nullptr);
        for (const QLabel *label : form->findChildren<QLabel *>()) {
            // In some fonts a text that may break needs its second line.
            const bool fits = label->wordWrap()
                ? label->heightForWidth(label->width()) <= label->height()
                : label->fontMetrics().horizontalAdvance(label->text()) <= label->width();
            QVERIFY2(fits, qPrintable(label->objectName()));
        }
        QCOMPARE(form->minimumSizeHint().width() <= 300, true);
        // These two carry each other's picture.
        const QImage swi = part<QPushButton>("pushButton_swi")->icon().pixmap(32).toImage();
        QCOMPARE(swi, QIcon(QStringLiteral(":/icon/Application_SWIM.png")).pixmap(32).toImage());
        QVERIFY(swi != part<QPushButton>("pushButton_swim")->icon().pixmap(32).toImage());
    }

private:
    template <typename Widget>
    Widget *part(const char *name) const
    {
        return form->findChild<Widget *>(QLatin1String(name));
    }
    void click(const char *name) const { QTest::mouseClick(part<QWidget>(name), Qt::LeftButton); }
    /// Names of the signals that a press of a button brings, with the argument of those that have one.
    QStringList signalsOf(const char *button) const
    {
        QStringList told;
        const auto tell = [this, &told](auto signal, const QString &name) {
            return connect(form.get(), signal, form.get(), [&told, name] { told.append(name); });
        };
        const auto tellArgument = [this, &told](auto signal, const QString &name) {
            return connect(form.get(), signal, form.get(), [&told, name](bool argument) {
                told.append(name + (argument ? QStringLiteral(" true") : QStringLiteral(" false")));
            });
        };
        const QVector<QMetaObject::Connection> connections{
            tell(&PatientQueryForm::jointStart, QStringLiteral("jointStart")),
            tell(&PatientQueryForm::compareStart, QStringLiteral("compareStart")),
            tell(&PatientQueryForm::swiStart, QStringLiteral("swiStart")),
            tell(&PatientQueryForm::vesselStart, QStringLiteral("vesselStart")),
            tell(&PatientQueryForm::searchPatient, QStringLiteral("searchPatient")),
            tellArgument(&PatientQueryForm::brainSegment, QStringLiteral("brainSegment")),
            tellArgument(&PatientQueryForm::IsChecked, QStringLiteral("IsChecked")),
            tellArgument(&PatientQueryForm::advanceInquiry, QStringLiteral("advanceInquiry")),
            tellArgument(&PatientQueryForm::loadDir, QStringLiteral("loadDir"))};
        click(button);
        for (const QMetaObject::Connection &connection : connections) {
            disconnect(connection);
        }
        return told;
    }

    std::optional<TemporaryIndex> index;
    std::unique_ptr<PatientQueryForm> form;
};

PM_TEST_MAIN(PatientQueryFormTest)
#include "tst_patientqueryform.moc"
