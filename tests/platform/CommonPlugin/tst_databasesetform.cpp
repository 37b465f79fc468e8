#include "configlocation.h"
#include "createconnection.h"
#include "databasesetform.h"
#include "filechooser.h"
#include "importscene.h"
#include "indexconnection.h"
#include "mainsetting.h"
#include "messageanswers.h"
#include "settingsnotifier.h"
#include "testfiles.h"
#include "testmain.h"
#include "uploadstatus.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSqlQuery>
#include <QtTest>

namespace {

template <typename Widget>
Widget *part(const char *name)
{
    return DataBaseSetForm::instance()->findChild<Widget *>(QString::fromUtf8(name));
}

QString shown(const char *name)
{
    return part<QLabel>(name)->text();
}

/// Presses a button of the care and waits for its end.
void work(const char *button)
{
    part<QPushButton>(button)->click();
    QTRY_VERIFY(!DataBaseSetForm::isAnyWorkRunning());
}

} // namespace

class DataBaseSetFormTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        FileChooser::setAnswerer({});
        DataBaseSetForm::instance()->close();
    }

    void showsTheIndexAsItIsNow()
    {
        const ImportScene scene;
        DataBaseSetForm *form = DataBaseSetForm::instance();
        form->show();
        QCOMPARE(shown("path"), scene.index.path());
        QTRY_COMPARE(shown("patient"), QStringLiteral("0"));
        QVERIFY(shown("size") != QStringLiteral("0 bytes"));
        part<QPushButton>("copy")->click();
        QCOMPARE(QApplication::clipboard()->text(), scene.index.path());

        const qlonglong patient = scene.index.addPatient(QStringLiteral("A"), QStringLiteral("1"));
        const qlonglong study = scene.index.addStudy(patient, QStringLiteral("1.2"));
        scene.index.addStudy(patient, QStringLiteral("1.3"));
        const qlonglong series = scene.index.addSeries(study, QStringLiteral("1.2.1"));
        for (int i = 1; i <= 3; ++i) {
            scene.index.addImage(series, QStringLiteral("1.2.1.%1").arg(i));
        }
        scene.index.query(QStringLiteral("UPDATE generalstudy SET Status = ? WHERE pk = ?"),
            {UploadStatus::uploaded(), study});
        form->close();
        form->show();
        QTRY_COMPARE(shown("imageformat"), QStringLiteral("3"));
        QCOMPARE(shown("patient"), QStringLiteral("1"));
        QCOMPARE(shown("generalstudy"), QStringLiteral("2"));
        QCOMPARE(shown("generalstudy已上传"), QStringLiteral("1"));
        QCOMPARE(shown("generalstudy未上传"), QStringLiteral("1"));
        QCOMPARE(shown("generalseries"), QStringLiteral("1"));
        QVERIFY(!part<QLabel>("failure")->isVisible());
    }

    void saysWhyThereIsNone()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("letter.db"));
        writeFile(path, QByteArray(4096, 'x'));
        setDatabasePath(path);
        QVERIFY(!createConnection());
        DataBaseSetForm::instance()->show();
        QCOMPARE(shown("path"), path);
        QVERIFY(part<QLabel>("failure")->isVisible());
        QVERIFY(shown("failure").contains(path));
        QCOMPARE(shown("patient"), QStringLiteral("–"));
        work("check");
        QVERIFY(shown("result").contains(path));
        setDatabasePath(QString());
    }

    void checksTheIndex()
    {
        const ImportScene scene;
        fill(scene);
        DataBaseSetForm::instance()->show();
        work("check");
        const QString sound = shown("result");
        scene.index.query(QStringLiteral("PRAGMA foreign_keys = OFF"));
        scene.index.addStudy(4711000, QStringLiteral("1.2"));
        work("check");
        QVERIFY(shown("result") != sound);
        QVERIFY2(shown("result").contains(QStringLiteral("generalstudy")), qPrintable(shown("result")));
    }

    void compactsTheIndex()
    {
        const ImportScene scene;
        fill(scene);
        scene.index.query(QStringLiteral("DELETE FROM patient"));
        scene.index.query(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
        const qint64 before = QFileInfo(scene.index.path()).size();
        DataBaseSetForm::instance()->show();
        work("compact");
        QVERIFY2(QFileInfo(scene.index.path()).size() < before / 4, qPrintable(shown("result")));

        // While another program writes, nothing is done, and that is said in the end.
        const IndexConnection other(scene.index.path());
        const WriteTransaction writing(other.database());
        part<QPushButton>("compact")->click();
        QVERIFY(DataBaseSetForm::isAnyWorkRunning());
        QTRY_VERIFY_WITH_TIMEOUT(!DataBaseSetForm::isAnyWorkRunning(), IndexConnection::lockWaitMs);
        QVERIFY2(shown("result").contains(QStringLiteral("in use by another")), qPrintable(shown("result")));
    }

    void backsTheIndexUp()
    {
        const ImportScene scene;
        fill(scene);
        const QString target = scene.index.folder() + QStringLiteral("/copy.db");
        FileChooser::setAnswerer([&](const FileChooser::Request &) { return target; });
        DataBaseSetForm::instance()->show();
        for (int round = 0; round < 2; ++round) { // the second one replaces the first
            work("backup");
            const IndexConnection copy(target);
            QVERIFY2(copy.isOpen(), qPrintable(shown("result")));
            QSqlQuery query(QStringLiteral("SELECT count(*) FROM patient"), copy.database());
            QVERIFY(query.next());
            QCOMPARE(query.value(0).toInt(), 20000 + round);
            scene.index.addPatient(QStringLiteral("new"), QString::number(round));
        }
        const QDir folder(scene.index.folder());
        QCOMPARE(folder.entryList({QStringLiteral("copy.db*")}), QStringList{QStringLiteral("copy.db")});
        QCOMPARE(QFile::permissions(target), QFile::permissions(scene.index.path()));

        FileChooser::setAnswerer([&](const FileChooser::Request &) { return scene.index.path(); });
        work("backup");
        QCOMPARE(scene.index.count("patient"), 20002);
        FileChooser::setAnswerer(
            [](const FileChooser::Request &) { return QStringLiteral("/proc/none/copy.db"); });
        work("backup");
        QVERIFY2(shown("result").contains(QStringLiteral("/proc/none")), qPrintable(shown("result")));
    }

    void endsItsWorkWhenAsked()
    {
        const ImportScene scene;
        fill(scene);
        DataBaseSetForm::instance()->show();
        const IndexConnection other(scene.index.path());
        const auto writing = std::make_unique<WriteTransaction>(other.database());
        part<QPushButton>("compact")->click(); // waits for the other writer
        part<QPushButton>("stop")->click();
        QTRY_VERIFY(!DataBaseSetForm::isAnyWorkRunning());
        QVERIFY2(shown("result").contains(QStringLiteral("Stopped")), qPrintable(shown("result")));
        QVERIFY(part<QPushButton>("compact")->isEnabled());
        QCOMPARE(
            scene.index.query(QStringLiteral("PRAGMA integrity_check")).toString(), QStringLiteral("ok"));
    }

    void leavesAnotherIndexToTheHost()
    {
        const ImportScene scene;
        const QTemporaryDir config;
        ConfigLocation::setBase(config.path());
        const QString other = scene.index.folder() + QStringLiteral("/other.db");
        FileChooser::setAnswerer([&](const FileChooser::Request &) { return other; });
        DataBaseSetForm::instance()->show();
        // There is no such index yet: a mistyped name makes none.
        MessageAnswers question(kivMessageBoxForm::AnswerCancel);
        part<QPushButton>("openAnother")->click();
        QVERIFY(MainSetting::databasePath().value().toString() != other);
        question.answer = kivMessageBoxForm::AnswerOk;
        part<QPushButton>("openAnother")->click();
        QCOMPARE(MainSetting::databasePath().value().toString(), other);
        QVERIFY(shown("said").contains(other));

        QSignalSpy wanted(SettingsNotifier::instance(), &SettingsNotifier::indexRequested);
        part<QPushButton>("openAnother")->click();
        QCOMPARE(wanted.count(), 1);
        QCOMPARE(wanted.first().first().toString(), other);
        ConfigLocation::setBase(QString());
    }

private:
    /// Some thousand records, so that there is something to do.
    static void fill(const ImportScene &scene)
    {
        scene.index.query(
            QStringLiteral("INSERT INTO patient (PatientName, PatientID, PatientComments) "
                           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
                           "SELECT 'P' || i, i, hex(randomblob(100)) FROM n"));
    }
};

PM_TEST_MAIN(DataBaseSetFormTest)
#include "tst_databasesetform.moc"
