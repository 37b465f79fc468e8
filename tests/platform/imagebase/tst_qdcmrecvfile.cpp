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
        QVERIFY(index.query(QStringLiteral("SELECT upCloudnum FROM series")).isNull());
    }
};

PM_TEST_MAIN(TestQDcmRecvFile)
#include "tst_qdcmrecvfile.moc"
