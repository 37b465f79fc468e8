#include "createconnection.h"
#include "imageformatform.h"
#include "messageanswers.h"
#include "patientform.h"
#include "seriesform.h"
#include "studyform.h"
#include "tableinfoform.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QToolBar>
#include <QtTest>

class MainWindowTest : public WindowTest
{
    Q_OBJECT

private slots:
    void toolbarHasThreeActionsAndNoMenu()
    {
        PatientManagerMainWindow &window = fixture->open();
        auto *toolBar = window.findChild<QToolBar *>(QStringLiteral("patientManagerToolBar"));
        QVERIFY(toolBar);
        QStringList names;
        for (const QAction *action : toolBar->actions()) {
            names.append(action->isSeparator() ? QStringLiteral("-") : action->objectName());
        }
        QCOMPARE(names.join(QLatin1Char(' ')),
            QStringLiteral("actionLoadDir actionRefresh actionUploadCloudData -"));
        QCOMPARE(toolBar->contextMenuPolicy(), Qt::PreventContextMenu);
        QCOMPARE(window.toolBarArea(toolBar), Qt::TopToolBarArea);
        const auto actions = window.findChildren<QAction *>(QRegularExpression(QStringLiteral("^action")));
        QCOMPARE(actions.size(), 15);
        for (const QAction *action : actions) {
            QVERIFY2(!action->icon().pixmap(64).isNull(), qPrintable(action->objectName()));
        }
        QCOMPARE(window.size(), QSize(800, 600));
    }

    void splitterStacksTheForms()
    {
        PatientManagerMainWindow &window = fixture->open();
        auto *splitter = qobject_cast<QSplitter *>(window.centralWidget());
        QVERIFY(splitter);
        QCOMPARE(splitter->orientation(), Qt::Vertical);
        QVERIFY(!splitter->childrenCollapsible());
        QCOMPARE(splitter->count(), 5);
        QCOMPARE(splitter->widget(0), static_cast<QWidget *>(window.getTableInfoForm()));
        const QVector<QWidget *> forms = recordForms(window);
        for (int i = 0; i < forms.size(); ++i) {
            QCOMPARE(splitter->widget(i + 1), forms[i]);
            QCOMPARE(forms[i]->isHidden(), forms[i] == window.getImagesForm());
        }
        QVERIFY(window.getTableInfoForm()->isHidden());
        QVERIFY(QMetaType::type("QList<qlonglong>") != QMetaType::UnknownType);
    }

    void privateConnectionLivesWithTheWindow()
    {
        fixture->open();
        const QString name = fixture->privateConnection();
        QVERIFY(!QUuid(name).isNull());
        // 2 would be the default of a connection that nobody configured.
        for (const auto &[pragma, expected] : {std::pair("foreign_keys", 1), std::pair("synchronous", 1)}) {
            QSqlQuery query(
                QStringLiteral("PRAGMA %1").arg(QLatin1String(pragma)), QSqlDatabase::database(name));
            QVERIFY(query.next());
            QCOMPARE(query.value(0).toInt(), expected);
        }
        fixture->closeWindow();
        QVERIFY(!QSqlDatabase::contains(name));
        QVERIFY(fixture->index.database().isOpen());
    }

    void windowOpensWithoutAnIndex()
    {
        allowWarning(QStringLiteral("QSqlQuery::exec: database not open")); // the forms try to read
        QSqlDatabase::database().close();
        QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
        fixture->writeIni(
            QStringLiteral("index.db"), "no database at all, but longer than a header of one would be");
        setDatabasePath(fixture->path(QStringLiteral("index.db")));
        const QString folder = fixture->makeSeries(QStringLiteral("series"), 1);
        {
            PatientManagerMainWindow &window = fixture->open();
            QVERIFY(!recordForms(window).contains(nullptr));
            QCOMPARE(fixture->privateConnection(), QString());
            window.onLoadSelecetPath(folder);
            QVERIFY(!window.isImporting());
            fixture->closeWindow();
        }
        setDatabasePath(fixture->index.path());
        QVERIFY(createConnection());
    }

    void selectionIsTheLatestReport()
    {
        PatientManagerMainWindow &window = fixture->open();
        QVERIFY(window.selectedTable().isEmpty() && window.selectedKeys().isEmpty());
        emit window.getStudyForm()->selectMutiPK({7, 9}, QStringLiteral("generalstudy"));
        QCOMPARE(window.selectedTable(), QStringLiteral("generalstudy"));
        QCOMPARE(window.selectedKeys(), (QList<qlonglong>{7, 9}));
        emit window.getImagesForm()->selectPK({3}, QStringLiteral("imageformat"));
        QCOMPARE(window.selectedTable(), QStringLiteral("imageformat"));
        QCOMPARE(window.selectedKeys(), QList<qlonglong>{3});
    }

    void deletedFormIsTreatedAsAbsent()
    {
        PatientManagerMainWindow &window = fixture->open();
        const MessageAnswers answers;
        delete window.getPatientForm();
        delete window.getTableInfoForm();
        QVERIFY(!window.getPatientForm());
        window.onShowTable(QStringLiteral("generalstudy"));
        QVERIFY(window.getSeriesForm()->isHidden());
        for (const char *name : {"actionRefresh", "actionSubmit"}) {
            window.findChild<QAction *>(QLatin1String(name))->trigger();
        }
        emit window.updateFieldHeader();
        emit window.deletereflash(QStringLiteral("patient"));
    }

    void refreshReadsPatientsAndEmptiesTheRest()
    {
        const qlonglong patient = fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
        fixture->index.addStudy(patient, QStringLiteral("1.1"));
        PatientManagerMainWindow &window = fixture->open();
        emit window.getPatientForm()->selectPatient(patient);
        fixture->index.addPatient(QStringLiteral("C^D"), QStringLiteral("2"));
        QCOMPARE(window.getPatientForm()->tableModel()->rowCount(), 1);
        window.findChild<QAction *>(QStringLiteral("actionRefresh"))->trigger();
        QCOMPARE(window.getPatientForm()->tableModel()->rowCount(), 2);
        QCOMPARE(window.getStudyForm()->tableModel()->rowCount(), 0);
    }

    void submitAsksFirst_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("stored");
        QTest::newRow("cancel") << 2 << QString();
        QTest::newRow("ok") << 1 << QStringLiteral("changed");
        QTest::newRow("any other answer") << 0 << QStringLiteral("changed");
    }

    void submitAsksFirst()
    {
        QFETCH(int, answer);
        fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
        PatientManagerMainWindow &window = fixture->open();
        editComment(window, QStringLiteral("changed"));
        const MessageAnswers question(answer);
        window.findChild<QAction *>(QStringLiteral("actionSubmit"))->trigger();
        QCOMPARE(question.titles, QStringList(QStringLiteral("发送")));
        QCOMPARE(question.texts, QStringList(QStringLiteral("确定要发送选择的病人数据吗?")));
        QTEST(storedComment(), "stored");
    }

    void fieldWindowIsMadeAnewAndRelays()
    {
        PatientManagerMainWindow &window = fixture->open();
        auto *setting = window.findChild<QAction *>(QStringLiteral("actionSettingField"));
        for (int round = 0; round < 2; ++round) {
            setting->trigger();
            QPointer<QWidget> fields = visibleWindow("selectHideForm");
            QVERIFY(fields);
            setting->trigger();
            QCOMPARE(visibleWindow("selectHideForm"), fields.data());
            QVERIFY(fields->windowFlags() & Qt::WindowStaysOnTopHint);
            QSignalSpy relayed(&window, &PatientManagerMainWindow::updateFieldHeader);
            QVERIFY(QMetaObject::invokeMethod(fields, "updateFieldHeader"));
            QCOMPARE(relayed.size(), 1);
            fields->close();
            QTRY_VERIFY(!fields);
        }
    }

    void settingsWindowsComeUp_data()
    {
        QTest::addColumn<QString>("action");
        QTest::newRow("DataBaseSetForm") << QStringLiteral("actionDatabase");
        QTest::newRow("swimconfig") << QStringLiteral("actionTest");
    }

    void settingsWindowsComeUp()
    {
        QFETCH(QString, action);
        auto *trigger = fixture->open().findChild<QAction *>(action);
        trigger->trigger();
        QWidget *shown = visibleWindow(QTest::currentDataTag());
        QVERIFY(shown);
        shown->close();
        trigger->trigger();
        QCOMPARE(visibleWindow(QTest::currentDataTag()), shown);
    }

private:
    /// Shows one patient in the window and changes its comment, unsaved.
    void editComment(PatientManagerMainWindow &window, const QString &text) const
    {
        QSqlTableModel *model = window.getPatientForm()->tableModel();
        const int column = model->record().indexOf(QStringLiteral("PatientComments"));
        QVERIFY(model->rowCount() == 1 && column > 0);
        QVERIFY(model->setData(model->index(0, column), text));
    }

    QString storedComment() const
    {
        return fixture->index.query(QStringLiteral("SELECT PatientComments FROM patient")).toString();
    }
};

PM_TEST_MAIN(MainWindowTest)
#include "mainwindowtest.moc"
