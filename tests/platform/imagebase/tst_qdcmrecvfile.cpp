#include "qdcmrecvfile.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSignalSpy>
#include <QtTest>

class TestQDcmRecvFile : public QObject
{
    Q_OBJECT

private slots:
    void entersWhatIsMissingAndAnswers()
    {
        const TemporaryIndex index;
        const qlonglong study =
            index.addStudy(index.addPatient(QStringLiteral("A"), QStringLiteral("1")), QStringLiteral("1.1"));
        const QString uid = QStringLiteral("1.1.1");
        const qlonglong series = index.addSeries(study, uid);
        index.addImage(series, QStringLiteral("1.1.1.1"));
        QDcmRecvFile worker;
        QVERIFY(!worker.needtoWriteDB({QStringLiteral("9.9")}));
        QVERIFY(worker.needtoWriteDB({QStringLiteral("9.9"), uid}));

        QSignalSpy answered(&worker, &QDcmRecvFile::notifyUploadFile);
        const QStringList files{QStringLiteral("/a")};
        worker.onNotifyWriteDB({uid, uid}, {QStringLiteral("1.1.1.1")}, files, QStringLiteral("A"));
        QCOMPARE(answered.count(), 1);
        QCOMPARE(answered[0][2].toStringList(), files);
        index.query(QStringLiteral("UPDATE images SET Cloudflag = 1"));
        index.addImage(series, QStringLiteral("1.1.1.2"));
        worker.onNotifyWriteDB({uid}, {}, {}, QString());
        // One row a series with its present count, and an upload that was recorded stays recorded.
        QCOMPARE(index.query(QStringLiteral("SELECT group_concat(seriesUID || ' ' || recvnum) FROM series"))
                     .toString(),
            QStringLiteral("1.1.1 2"));
        QCOMPARE(
            index.query(QStringLiteral("SELECT group_concat(Cloudflag) FROM images ORDER BY SOPInstanceUID"))
                .toString(),
            QStringLiteral("1,0"));
        QCOMPARE(counters(index), QStringLiteral("2/1"));
    }

    /// Whoever changes records, flags or the files of an upload: the counters follow in the same statement.
    void countersFollowWhatTheyCount()
    {
        const TemporaryIndex index;
        const qlonglong study =
            index.addStudy(index.addPatient(QStringLiteral("A"), QStringLiteral("1")), QStringLiteral("1.1"));
        const QString uid = QStringLiteral("1.1.1");
        const qlonglong series = index.addSeries(study, uid);
        for (int image = 1; image <= 3; ++image) {
            index.addImage(
                series, QStringLiteral("1.1.1.%1").arg(image), image, QStringLiteral("/f%1").arg(image));
        }
        QDcmRecvFile().onNotifyWriteDB({uid}, {}, {}, QString());
        const auto after = [&](const char *sql) {
            index.query(QLatin1String(sql));
            return counters(index);
        };
        const auto states = [&] {
            return index
                .query(QStringLiteral("SELECT s.Status || t.Status || p.Status FROM generalseries s, "
                                      "generalstudy t, patient p"))
                .toString();
        };
        QCOMPARE(counters(index), QStringLiteral("3/-"));
        QCOMPARE(after("INSERT INTO uploadtask (pk, Service) VALUES (7, 'x')"), QStringLiteral("3/-"));
        QCOMPARE(after("INSERT INTO uploadfile (task_fk, FilePath, SOPInstanceUID, SeriesInstanceUID, Bytes) "
                       "SELECT 7, FilePath, SOPInstanceUID, '1.1.1', 10 FROM imageformat"),
            QStringLiteral("3/0"));
        for (const char *table : {"patient", "generalstudy", "generalseries"}) {
            index.query(QStringLiteral("UPDATE %1 SET Status = '上传中'").arg(QLatin1String(table)));
        }
        QCOMPARE(
            after("UPDATE images SET Cloudflag = 1 WHERE SOPInstanceUID = '1.1.1.1'"), QStringLiteral("3/1"));
        QCOMPARE(
            after("UPDATE images SET Cloudflag = 1 WHERE SOPInstanceUID = '1.1.1.1'"), QStringLiteral("3/1"));
        QCOMPARE(
            after("UPDATE uploadfile SET State = 2 WHERE SOPInstanceUID = '1.1.1.1'"), QStringLiteral("3/1"));
        QCOMPARE(
            after("UPDATE uploadfile SET State = 3 WHERE SOPInstanceUID = '1.1.1.2'"), QStringLiteral("3/1"));
        QCOMPARE(index
                     .query(QStringLiteral("SELECT Files || Stored || Failed || Bytes || BytesStored FROM "
                                           "uploadtask"))
                     .toString(),
            QStringLiteral("3113010"));
        // Another content is not in the cloud; while a file waits, the series is still being uploaded.
        QCOMPARE(
            after("UPDATE images SET Cloudflag = 0 WHERE SOPInstanceUID = '1.1.1.1'"), QStringLiteral("3/0"));
        QCOMPARE(after("UPDATE imageformat SET FilePath = '/new' WHERE SOPInstanceUID = '1.1.1.3'"),
            QStringLiteral("3/0"));
        QCOMPARE(index.query(QStringLiteral("SELECT FilePath FROM uploadfile WHERE State = 0")).toString(),
            QStringLiteral("/new"));
        QCOMPARE(states(), QStringLiteral("上传中上传中上传中"));
        // The last that waited is deleted: it fails for that reason, and nothing is uploading any more.
        QCOMPARE(after("DELETE FROM imageformat WHERE SOPInstanceUID = '1.1.1.3'"), QStringLiteral("2/-"));
        QCOMPARE(
            index.query(QStringLiteral("SELECT group_concat(State || Fault) FROM uploadfile")).toString(),
            QStringLiteral("20,30,33"));
        QCOMPARE(states(), QStringLiteral("未上传未上传未上传"));

        QCOMPARE(after("UPDATE images SET Cloudflag = 1"), QStringLiteral("2/2"));
        index.addImage(series, QStringLiteral("1.1.1.4"));
        QCOMPARE(counters(index), QStringLiteral("3/2"));
        QCOMPARE(
            after("UPDATE uploadfile SET State = 0 WHERE SOPInstanceUID = '1.1.1.2'"), QStringLiteral("3/2"));
        QCOMPARE(after("DELETE FROM uploadtask"), QStringLiteral("3/2"));
        QCOMPARE(index.count("uploadfile"), 0);
        index.query(QStringLiteral("DELETE FROM generalstudy"));
        QCOMPARE(
            index
                .query(QStringLiteral("SELECT (SELECT count(*) FROM series) + (SELECT count(*) FROM images)"))
                .toInt(),
            0);
    }

private:
    /// recvnum/upCloudnum of the one series.
    static QString counters(const TemporaryIndex &index)
    {
        return index.query(QStringLiteral("SELECT recvnum || '/' || ifnull(upCloudnum, '-') FROM series"))
            .toString();
    }
};

PM_TEST_MAIN(TestQDcmRecvFile)
#include "tst_qdcmrecvfile.moc"
