#include "createconnection.h"
#include "imageformatform.h"
#include "kivmessageboxform.h"
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
    void actionsAreAllThere_data();
    void actionsAreAllThere();
    void toolbarHasThreeActionsAndNoMenu();
    void splitterStacksTheForms();
    void privateConnectionLivesWithTheWindow();
    void windowOpensWithoutAnIndex();
    void selectionIsTheLatestReport();
    void onShowTableShowsOneForm_data();
    void onShowTableShowsOneForm();
    void deletedFormIsTreatedAsAbsent();
    void selectionCascadesDown();
    void refreshReadsPatientsAndEmptiesTheRest();
    void submitAsksFirst_data();
    void submitAsksFirst();
    void revertDropsEditsUnasked();
    void fieldWindowIsMadeAnewAndRelays();
    void settingsWindowsComeUp_data();
    void settingsWindowsComeUp();

private:
    /// Shows one patient in the window and changes its comment, unsaved.
    void editComment(PatientManagerMainWindow &window, const QString &text) const;
    QString storedComment() const
    {
        return fixture->index.query(QStringLiteral("SELECT PatientComments FROM patient")).toString();
    }
};

void MainWindowTest::actionsAreAllThere_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("icon");
    const auto row = [](const char *name, const char *text, const char *toolTip, const char *icon) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(toolTip)
                            << QString::fromUtf8(icon);
    };
    row("actionDatabase", "Database", "Database", ":/icon/Patient list_Database.png");
    row("actionLoadDir", "loadFolder", "选择文件路径", ":/icon/Patient list_Local folder.png");
    row("actionRefresh", "Refresh", "刷新", ":/icon/Patient list_Refresh.png");
    row("actionDelete", "Delete", "删除", ":/icon/Patient list_Delete.png");
    row("actionSettingField", "SettingField", "配置字段", ":/icon/2D view_Setting.png");
    row("actionAnonymize", "Anonymize", "Anonymize", ":/icon/Patient List_Anonymize.png");
    row("actionSubmit", "submit", "submit", ":/icon/Patient list_Save Changes.png");
    row("actionRevertall", "revertall", "revertall", ":/icon/Patient list_Cancel Changes.png");
    row("actionSaveDicom", "saveDicom", "保存数据到指定路径", ":/icon/local_save.png");
    row("actionUploadCloudData", "uploadCloudData", "上传数据", ":/icon/cloud_upload.png");
    row("actionDownloadCloudData", "downloadCloudData", "download Cloud Data", ":/icon/cloud_download.png");
    row("actionPatientInfoEdit", "patientInfoEdit", "patientInfoEdit", ":/icon/2D view_ROI.png");
    row("actionSendDicom", "sendDicomFiles", "Send Dicom Files", ":/icon/slice.png");
    row("actionCloudBrower", "cloudBrower", "cloudBrower", ":/icon/cloudBrower.png");
    row("actionTest", "test", "test", ":/icons/tongbusuofang.png");
}

void MainWindowTest::actionsAreAllThere()
{
    QFETCH(QString, icon);
    const auto *action = fixture->open().findChild<QAction *>(
        QLatin1String(QTest::currentDataTag()), Qt::FindDirectChildrenOnly);
    QVERIFY(action);
    QTEST(action->text(), "text");
    QTEST(action->toolTip(), "toolTip"); // without one of its own, an action shows its text
    QCOMPARE(action->isEnabled(), action->objectName() != QLatin1String("actionRevertall"));
    QCOMPARE(QImage(icon).size(), QSize(64, 64));
    // A pixmap's own format: back from it, rounding differs from processor to processor.
    const auto pixels = [](const QImage &image) {
        return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    };
    QCOMPARE(pixels(action->icon().pixmap(64).toImage()), pixels(QImage(icon)));
}

void MainWindowTest::toolbarHasThreeActionsAndNoMenu()
{
    PatientManagerMainWindow &window = fixture->open();
    auto *toolBar = window.findChild<QToolBar *>(QStringLiteral("patientManagerToolBar"));
    QVERIFY(toolBar);
    QStringList names;
    for (const QAction *action : toolBar->actions()) {
        names.append(action->isSeparator() ? QStringLiteral("-") : action->objectName());
    }
    QCOMPARE(
        names.join(QLatin1Char(' ')), QStringLiteral("actionLoadDir actionRefresh actionUploadCloudData -"));
    QCOMPARE(toolBar->contextMenuPolicy(), Qt::PreventContextMenu);
    QCOMPARE(window.toolBarArea(toolBar), Qt::TopToolBarArea);
    QCOMPARE(window.findChildren<QAction *>(QRegularExpression(QStringLiteral("^action"))).size(), 15);
    QCOMPARE(window.size(), QSize(800, 600));
}

void MainWindowTest::splitterStacksTheForms()
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

void MainWindowTest::privateConnectionLivesWithTheWindow()
{
    fixture->open();
    const QString name = fixture->privateConnection();
    QVERIFY(!QUuid(name).isNull());
    // 2 would be the default of a connection that nobody configured.
    for (const auto &[pragma, expected] : {std::pair("foreign_keys", 1), std::pair("synchronous", 1)}) {
        QSqlQuery query(QStringLiteral("PRAGMA %1").arg(QLatin1String(pragma)), QSqlDatabase::database(name));
        QVERIFY(query.next());
        QCOMPARE(query.value(0).toInt(), expected);
    }
    fixture->closeWindow();
    QVERIFY(!QSqlDatabase::contains(name));
    QVERIFY(fixture->index.database().isOpen());
}

void MainWindowTest::windowOpensWithoutAnIndex()
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

void MainWindowTest::selectionIsTheLatestReport()
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

void MainWindowTest::onShowTableShowsOneForm_data()
{
    QTest::addColumn<int>("shown");
    QTest::newRow("patient") << 0;
    QTest::newRow("generalstudy") << 1;
    QTest::newRow("generalseries") << 2;
    QTest::newRow("imageformat") << 3;
}

void MainWindowTest::onShowTableShowsOneForm()
{
    QFETCH(int, shown);
    PatientManagerMainWindow &window = fixture->open();
    window.onShowTable(QStringLiteral("images"));
    QVERIFY(window.getTableInfoForm()->isHidden());
    QVERIFY(window.getPatientForm()->isVisible() && window.getStudyForm()->isVisible());

    window.onShowTable(QLatin1String(QTest::currentDataTag()));
    QVERIFY(window.getTableInfoForm()->isVisible());
    const QVector<QWidget *> forms = recordForms(window);
    for (int i = 0; i < forms.size(); ++i) {
        QCOMPARE(forms[i]->isVisible(), i == shown);
    }
}

void MainWindowTest::deletedFormIsTreatedAsAbsent()
{
    PatientManagerMainWindow &window = fixture->open();
    kivMessageBoxForm::setAnswerer([](const kivMessageBoxForm::Request &) { return 1; });
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

void MainWindowTest::selectionCascadesDown()
{
    const qlonglong patient = fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
    const qlonglong study = fixture->index.addStudy(patient, QStringLiteral("1.1"));
    const qlonglong series = fixture->index.addSeries(study, QStringLiteral("1.1.1"));
    fixture->index.addImage(series, QStringLiteral("1.1.1.1"));
    PatientManagerMainWindow &window = fixture->open();
    emit window.getPatientForm()->selectPatient(patient);
    QCOMPARE(window.getStudyForm()->tableModel()->rowCount(), 1);
    QCOMPARE(window.getSeriesForm()->tableModel()->rowCount(), 1);
    QCOMPARE(window.getImagesForm()->tableModel()->rowCount(), 0);
    emit window.getSeriesForm()->selectSeries(series);
    QCOMPARE(window.getImagesForm()->tableModel()->rowCount(), 1);
}

void MainWindowTest::refreshReadsPatientsAndEmptiesTheRest()
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

void MainWindowTest::editComment(PatientManagerMainWindow &window, const QString &text) const
{
    QSqlTableModel *model = window.getPatientForm()->tableModel();
    const int column = model->record().indexOf(QStringLiteral("PatientComments"));
    QVERIFY(model->rowCount() == 1 && column > 0);
    QVERIFY(model->setData(model->index(0, column), text));
}

void MainWindowTest::submitAsksFirst_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<QString>("stored");
    QTest::newRow("cancel") << 2 << QString();
    QTest::newRow("ok") << 1 << QStringLiteral("changed");
    QTest::newRow("any other answer") << 0 << QStringLiteral("changed");
}

void MainWindowTest::submitAsksFirst()
{
    QFETCH(int, answer);
    fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
    PatientManagerMainWindow &window = fixture->open();
    editComment(window, QStringLiteral("changed"));
    kivMessageBoxForm::Request asked;
    kivMessageBoxForm::setAnswerer([&asked, answer](const kivMessageBoxForm::Request &request) {
        asked = request;
        return answer;
    });
    window.findChild<QAction *>(QStringLiteral("actionSubmit"))->trigger();
    QCOMPARE(asked.title, QStringLiteral("发送"));
    QCOMPARE(asked.text, QStringLiteral("确定要发送选择的病人数据吗?"));
    QCOMPARE(asked.buttons, 3);
    QTEST(storedComment(), "stored");
}

void MainWindowTest::revertDropsEditsUnasked()
{
    fixture->index.addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
    PatientManagerMainWindow &window = fixture->open();
    editComment(window, QStringLiteral("changed"));
    QVERIFY(window.getPatientForm()->hasUnsavedEdits());
    window.findChild<QAction *>(QStringLiteral("actionRevertall"))->trigger();
    QVERIFY(!window.getPatientForm()->hasUnsavedEdits());
    QCOMPARE(storedComment(), QString());
}

void MainWindowTest::fieldWindowIsMadeAnewAndRelays()
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

void MainWindowTest::settingsWindowsComeUp_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("DataBaseSetForm") << QStringLiteral("actionDatabase");
    QTest::newRow("swimconfig") << QStringLiteral("actionTest");
}

void MainWindowTest::settingsWindowsComeUp()
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

PM_TEST_MAIN(MainWindowTest)
#include "mainwindowtest.moc"
