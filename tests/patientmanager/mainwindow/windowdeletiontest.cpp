#include "deletionnotifier.h"
#include "messageanswers.h"
#include "ntableview.h"
#include "patientform.h"
#include "studyform.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QSqlTableModel>
#include <QtTest>

#include <optional>

/// What the window asks before a deletion, and whom it tells.
class WindowDeletionTest : public WindowTest
{
    Q_OBJECT

private slots:
    void everyAnswerButCancelDeletes_data()
    {
        QTest::addColumn<int>("given");
        QTest::addColumn<int>("left");
        QTest::newRow("OK") << 1 << 0;
        QTest::newRow("Cancel") << 2 << 1;
        QTest::newRow("another") << 0 << 0;
    }

    void everyAnswerButCancelDeletes()
    {
        QFETCH(int, given);
        answers->answer = given;
        QStringList told;
        connect(window, &PatientManagerMainWindow::deletereflash, this,
            [&](const QString &table) { told.append(table); });
        connect(window, &PatientManagerMainWindow::thumbViewReflash, this,
            [&] { told.append(QStringLiteral("pictures")); });
        connect(
            window->deletions(), &DeletionNotifier::ended, this, [&] { told.append(QStringLiteral("end")); });
        trigger();
        QCOMPARE(answers->texts, QStringList{QStringLiteral("确定要删除病人数据吗?")});
        QTEST(fixture->index.count("patient"), "left");
        QTEST(window->getPatientForm()->tableModel()->rowCount(), "left");
        QCOMPARE(told.join(QLatin1Char(' ')),
            given == 2 ? QString()
                       : QStringLiteral("imageformat generalseries generalstudy patient pictures end"));
        QVERIFY(QFile::exists(path)); // referenced in place
    }

    void anUploadRefuses()
    {
        connect(
            window, &PatientManagerMainWindow::uploadFlag, window, [this] { window->onUpLoadFlag(true); });
        trigger();
        QCOMPARE(answers->texts, QStringList{QStringLiteral("数据正在上传中，请勿删除!")});
        QCOMPARE(fixture->index.count("patient"), 1);
    }

    void anEmptySelectionIsTold()
    {
        window->getPatientForm()->view()->clearSelection();
        trigger();
        QCOMPARE(answers->texts, QStringList{QStringLiteral("请选择至少一个病人数据!")});
        // A table without keys, and one that was reported last but has no form that selects.
        window->onSelectTable({}, QStringLiteral("imageformat"));
        window->onDeleteSelected();
        QCOMPARE(fixture->index.count("patient"), 1);
    }

    void theSettingIsReadBesideTheProgramFirst()
    {
        fixture->writeIni(QStringLiteral("config/main.ini"), "[datadelete]\ndataCopyType=1\n");
        fixture->writeIni(QStringLiteral("program/config/main.ini"), "[datadelete]\ndataCopyType=0\n");
        window->onDeleteSelected();
        QVERIFY(QFile::exists(path));
        QVERIFY(QFile::remove(fixture->path(QStringLiteral("program/config/main.ini"))));
        const TemporaryIndex &index = fixture->index;
        const qlonglong next = index.addPatient(QStringLiteral("B"), QStringLiteral("2"));
        index.addImage(index.addSeries(index.addStudy(next, QStringLiteral("2")), QStringLiteral("2.1")),
            QStringLiteral("2.1.1"), 1, path);
        window->getPatientForm()->reload();
        window->getPatientForm()->selectKeys({next});
        window->onDeleteSelected();
        QVERIFY(!QFile::exists(path));
        // The last file was no copy: only its own folder goes.
        QVERIFY(!QDir(fixture->path(QStringLiteral("files/p/t/s"))).exists());
        QVERIFY(QDir(fixture->path(QStringLiteral("files/p/t"))).exists());
    }

    void filesAloneGoByTheirQuery()
    {
        fixture->index.query(QStringLiteral("UPDATE imageformat SET IrradiationEventUID = 'copy'"));
        QVERIFY(QMetaObject::invokeMethod(window, "getSelectPatientPk"));
        window->deleteDataFloder(
            QStringLiteral("SELECT FilePath, IrradiationEventUID FROM imageformat JOIN generalseries ON "
                           "generalseries.pk = series_fk "
                           "JOIN generalstudy ON generalstudy.pk = study_fk WHERE patient_fk="));
        QVERIFY(!QDir(fixture->path(QStringLiteral("files/p"))).exists());
        QVERIFY(QDir(fixture->path(QStringLiteral("files"))).exists());
        QCOMPARE(fixture->index.count("imageformat"), 1);
    }

private:
    void prepare() override
    {
        const TemporaryIndex &index = fixture->index;
        path = fixture->path(QStringLiteral("files/p/t/s/1.dcm"));
        fixture->writeIni(QStringLiteral("files/p/t/s/1.dcm"), "x");
        patient = index.addPatient(QStringLiteral("A^One"), QStringLiteral("1"));
        index.addImage(index.addSeries(index.addStudy(patient, QStringLiteral("1")), QStringLiteral("1.1")),
            QStringLiteral("1.1.1"), 1, path);
        window = &fixture->open();
        window->getPatientForm()->selectKeys({patient});
        answers.emplace();
    }

    void trigger() { QVERIFY(QMetaObject::invokeMethod(window, "on_actionDelete_triggered")); }

    PatientManagerMainWindow *window = nullptr;
    QString path;
    qlonglong patient = 0;
    std::optional<MessageAnswers> answers;
};

PM_TEST_MAIN(WindowDeletionTest)
#include "windowdeletiontest.moc"
