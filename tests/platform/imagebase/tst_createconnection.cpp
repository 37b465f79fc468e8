#include "configlocation.h"
#include "createconnection.h"
#include "indexcheck.h"
#include "indexconnection.h"
#include "schema.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QSettings>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

using Reason = ConnectionFailure::Reason;
Q_DECLARE_METATYPE(ConnectionFailure::Reason)

namespace {

/// Runs statements on a file of its own, as another program would.
void runOn(const QString &path, const QStringList &statements)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        db.setDatabaseName(path);
        QVERIFY(db.open());
        for (const QString &statement : statements) {
            QSqlQuery query(db);
            QVERIFY2(query.exec(statement), qPrintable(query.lastError().text()));
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
}

/// The statements that make an index of an older version.
QStringList olderVersion(int version)
{
    QStringList statements;
    for (int step = 1; step <= version; ++step) {
        const QString file = QStringLiteral(PM_SOURCE_DIR "/platform/imagebase/schema/%1.sql").arg(step);
        statements += Schema::statements(QString::fromUtf8(bytesOf(file)));
    }
    statements.append(QStringLiteral("PRAGMA application_id = %1").arg(Schema::applicationId));
    statements.append(QStringLiteral("PRAGMA user_version = %1").arg(version));
    return statements;
}

} // namespace

class TestCreateConnection : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        setDatabasePath(path());
    }

    void cleanup()
    {
        QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false).close();
        QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
        setDatabasePath(QString());
        ConfigLocation::setBase(QString());
    }

    void createsAndKeepsItsConnection()
    {
        QVERIFY(createConnection());
        QSqlQuery(QSqlDatabase::database()).exec(QStringLiteral("CREATE TEMP TABLE mine (x)"));
        setDatabasePath(m_folder->filePath(QStringLiteral("other.db")));
        QVERIFY(createConnection());
        QCOMPARE(QSqlDatabase::database().databaseName(), path());
        QVERIFY(QSqlQuery(QSqlDatabase::database()).exec(QStringLiteral("SELECT * FROM mine")));
        for (const char *table :
            {"patientuser", "generalstudyuser", "generalseriesuser", "imageformatuser"}) {
            QSqlQuery flags(QStringLiteral("SELECT * FROM %1").arg(QLatin1String(table)));
            QVERIFY(flags.next());
            int shown = 0;
            for (int i = 0; i < flags.record().count(); ++i) {
                shown += flags.value(i).toInt();
            }
            QVERIFY2(shown >= 8 && shown <= 12, table);
            QVERIFY(!flags.next());
        }
    }

    void findsItsPath()
    {
        setDatabasePath(QString());
        ConfigLocation::setBase(m_folder->path());
        QVERIFY(
            databasePath().startsWith(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
        QSettings settings(
            ConfigLocation::besideProgram(QLatin1String(ConfigKey::mainIni)), QSettings::IniFormat);
        settings.setValue(
            QLatin1String(ConfigKey::databasePath), m_folder->filePath(QStringLiteral("configured.db")));
        settings.sync();
        QCOMPARE(databasePath(), m_folder->filePath(QStringLiteral("configured.db")));
        setDatabasePath(path());
        QCOMPARE(databasePath(), path());
    }

    void upgradesInPlaceAfterABackup_data()
    {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("inquiries");
        QTest::newRow("first version")
            << 1 << QStringLiteral("INSERT INTO andvancequiry (InquiryName) VALUES ('Mine')") << 1;
        QTest::newRow("second version") << 2 << QStringLiteral("SELECT 1") << 5;
    }

    void upgradesInPlaceAfterABackup()
    {
        QFETCH(int, version);
        QFETCH(QString, content);
        QDir().mkpath(QFileInfo(path()).path());
        runOn(path(),
            olderVersion(version)
                + QStringList{QStringLiteral("INSERT INTO patient (PatientName) VALUES ('Kept')"), content});
        QVERIFY2(createConnection(), qPrintable(connectionFailure().detail));
        QSqlQuery query(QStringLiteral("SELECT PatientName FROM patient"));
        QVERIFY(query.next());
        QCOMPARE(query.value(0).toString(), QStringLiteral("Kept"));
        QVERIFY(QSqlQuery().exec(QStringLiteral("SELECT * FROM obsoletefile")));
        QVERIFY(query.exec(QStringLiteral("SELECT count(*) FROM andvancequiry")) && query.next());
        QTEST(query.value(0).toInt(), "inquiries");
        const QStringList backups = QFileInfo(path()).dir().entryList({QStringLiteral("*.backup")});
        QCOMPARE(backups.size(), 1);
        runOn(QFileInfo(path()).dir().filePath(backups.first()),
            {QStringLiteral("SELECT PatientName FROM patient")});
    }

    void refusesAndLeavesUntouched_data()
    {
        QTest::addColumn<QStringList>("statements");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Reason>("reason");

        QTest::newRow("newer") << QStringList{QStringLiteral("CREATE TABLE patient (pk)"),
            QStringLiteral("PRAGMA application_id = %1").arg(Schema::applicationId),
            QStringLiteral("PRAGMA user_version = 99")}
                               << QByteArray() << Reason::Newer;
        QTest::newRow("foreign") << QStringList{QStringLiteral("CREATE TABLE photos (id)")} << QByteArray()
                                 << Reason::Foreign;
        QTest::newRow("no database") << QStringList()
                                     << QByteArray("Dear diary, this is no database at all.\n")
                                     << Reason::NotADatabase;
        QTest::newRow("schema page torn")
            << QStringList()
            << QByteArray("SQLite format 3\0\x10\0\x01\x01\0\x40\x20\x20", 24) + QByteArray(4072, '\x7f')
            << Reason::Damaged;
    }

    void refusesAndLeavesUntouched()
    {
        QFETCH(QStringList, statements);
        QFETCH(QByteArray, bytes);
        QFETCH(Reason, reason);
        QDir().mkpath(QFileInfo(path()).path());
        if (bytes.isEmpty()) {
            runOn(path(), statements);
        } else {
            writeFile(path(), bytes);
        }
        const QByteArray before = bytesOf(path());
        QVERIFY(!createConnection());
        const Reason found = connectionFailure().reason;
        QVERIFY2(found == reason || (reason == Reason::Damaged && found == Reason::NotADatabase),
            qPrintable(QStringLiteral("reason %1").arg(int(found))));
        QCOMPARE(connectionFailure().path, path());
        QCOMPARE(bytesOf(path()), before);
        // Neither by its name nor from a worker's thread can it be opened all the same.
        QVERIFY(!QSqlDatabase::contains(QLatin1String(QSqlDatabase::defaultConnection)));
        const IndexConnection worker(path());
        QVERIFY(!worker.isOpen());
        QVERIFY(worker.failure().reason != Reason::None);
        QCOMPARE(bytesOf(path()), before);
    }

    void refusesALockedFile()
    {
        QVERIFY(createConnection());
        cleanup();
        setDatabasePath(path());
        {
            QSqlDatabase holder =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("holder"));
            holder.setDatabaseName(path());
            QVERIFY(holder.open());
            QSqlQuery lock(holder);
            QVERIFY(lock.exec(QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"))
                && lock.exec(QStringLiteral("BEGIN EXCLUSIVE")));
            QVERIFY(!createConnection());
            QCOMPARE(connectionFailure().reason, Reason::Locked);
            lock.exec(QStringLiteral("ROLLBACK"));
            holder.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("holder"));
        QVERIFY(createConnection());
    }

    void countsFollowEveryChange()
    {
        const TemporaryIndex index;
        const qlonglong one = index.addPatient(QStringLiteral("One"), QStringLiteral("1"));
        const qlonglong two = index.addPatient(QStringLiteral("Two"), QStringLiteral("2"));
        const qlonglong study = index.addStudy(one, QStringLiteral("1.1"));
        const qlonglong other = index.addStudy(two, QStringLiteral("1.2"));
        const qlonglong ct = index.addSeries(study, QStringLiteral("1.1.1"), QStringLiteral("CT"));
        const qlonglong mr = index.addSeries(study, QStringLiteral("1.1.2"), QStringLiteral("MR"));
        const qlonglong image = index.addImage(ct, QStringLiteral("1.1.1.1"));
        index.addImage(ct, QStringLiteral("1.1.1.2"));
        index.addImage(mr, QStringLiteral("1.1.2.1"));
        const auto counts = [&](qlonglong patient) {
            return index
                .query(
                    QStringLiteral(
                        "SELECT NumberOfPatientRelatedStudies || ',' || NumberOfPatientRelatedSeries || ',' "
                        "|| NumberOfPatientRelatedInstances FROM patient WHERE pk = ?"),
                    {patient})
                .toString();
        };
        const auto modalities = [&](qlonglong pk) {
            return index
                .query(QStringLiteral("SELECT ModalitiesInStudy FROM generalstudy WHERE pk = ?"), {pk})
                .toString();
        };
        QCOMPARE(counts(one), QStringLiteral("1,2,3"));
        QCOMPARE(modalities(study), QStringLiteral("CT\\MR"));

        index.query(QStringLiteral("UPDATE generalseries SET Modality = 'PT' WHERE pk = ?"), {ct});
        QCOMPARE(modalities(study), QStringLiteral("MR\\PT"));
        index.query(QStringLiteral("UPDATE generalseries SET study_fk = ? WHERE pk = ?"), {other, mr});
        QCOMPARE(counts(one) + QLatin1Char(' ') + counts(two), QStringLiteral("1,1,2 1,1,1"));
        QCOMPARE(modalities(other), QStringLiteral("MR"));
        index.query(QStringLiteral("DELETE FROM imageformat WHERE pk = ?"), {image});
        QCOMPARE(counts(one), QStringLiteral("1,1,1"));
        index.query(QStringLiteral("DELETE FROM generalseries WHERE pk = ?"), {ct});
        QCOMPARE(counts(one), QStringLiteral("1,0,0"));
        QVERIFY(modalities(study).isEmpty());
        index.query(QStringLiteral("UPDATE generalstudy SET patient_fk = ? WHERE pk = ?"), {one, other});
        QCOMPARE(counts(one) + QLatin1Char(' ') + counts(two), QStringLiteral("2,1,1 0,0,0"));
        index.query(QStringLiteral("DELETE FROM generalstudy WHERE pk = ?"), {other});
        QCOMPARE(counts(one), QStringLiteral("1,0,0"));
        QCOMPARE(index.count("imageformat"), 0);
    }

    void newImagesSetUploadStatesBack()
    {
        const TemporaryIndex index;
        const qlonglong patient = index.addPatient(
            QStringLiteral("One"), QStringLiteral("1"), QStringLiteral("2001-01-01 00:00:00"));
        const qlonglong study = index.addStudy(patient, QStringLiteral("1.1"));
        const qlonglong series = index.addSeries(study, QStringLiteral("1.1.1"));
        for (const char *table : {"patient", "generalstudy", "generalseries"}) {
            index.query(QStringLiteral("UPDATE %1 SET Status = '已上传'").arg(QLatin1String(table)));
        }
        index.addImage(series, QStringLiteral("1.1.1.1"));
        for (const char *table : {"patient", "generalstudy", "generalseries"}) {
            QCOMPARE(
                index.query(QStringLiteral("SELECT Status FROM %1").arg(QLatin1String(table))).toString(),
                QStringLiteral("未上传"));
        }
        const QString updated = index.query(QStringLiteral("SELECT updated_time FROM patient")).toString();
        QVERIFY2(updated.startsWith(QDate::currentDate().toString(Qt::ISODate)), qPrintable(updated));
    }

private:
    QString path() const { return m_folder->filePath(QStringLiteral("sub/index.db")); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

PM_TEST_MAIN(TestCreateConnection)
#include "tst_createconnection.moc"
