#include "importreporttext.h"
#include "testmain.h"

#include <QSet>
#include <QtTest>

class ImportReportTextTest : public QObject
{
    Q_OBJECT

private slots:
    void reportNamesEveryCountAndFile()
    {
        ImportReport report;
        report.count(FileVerdict::New);
        report.count(FileVerdict::New);
        report.count({QStringLiteral("/data/图.dcm"), FileVerdict::Unreadable, FileReason::Damaged,
            QStringLiteral("breaks off")});
        report.count({QStringLiteral("/data/100%2.txt"), FileVerdict::NotDicom, FileReason::None, QString()});
        report.elapsedMs = 1500;
        report.notReached = 7;
        const QString text = importReportText(report);
        const QStringList lines = text.split(QLatin1Char('\n'));
        QVERIFY(lines.first().contains(QStringLiteral("4 files")));
        QVERIFY(lines.first().contains(QStringLiteral("7 more")));
        QVERIFY(lines.contains(QStringLiteral("  Found: 4")));
        QVERIFY(lines.contains(QStringLiteral("  New: 2")));
        QVERIFY(lines.contains(QStringLiteral("  Replaced: 0")));
        QVERIFY(lines.contains(QStringLiteral("  /data/图.dcm: Unreadable - Damaged: breaks off")));
        QVERIFY(lines.contains(QStringLiteral("  /data/100%2.txt: Not DICOM")));
    }

    void endsDiffer()
    {
        QSet<QString> texts;
        for (const ImportEnd end :
            {ImportEnd::Complete, ImportEnd::Cancelled, ImportEnd::IndexFailed, ImportEnd::DiskFull}) {
            ImportReport report;
            report.end = end;
            report.endDetail = QStringLiteral("disk I/O error %1");
            const QString text = importEndText(report);
            texts.insert(text);
            const bool failed = end == ImportEnd::IndexFailed || end == ImportEnd::DiskFull;
            QCOMPARE(text.contains(report.endDetail), failed);
        }
        QCOMPARE(texts.size(), 4);
    }

    void everyReasonHasItsOwnWords()
    {
        QSet<QString> texts;
        const int last = int(FileReason::DatabaseFailed);
        for (int reason = 1; reason <= last; ++reason) {
            ImportIssue issue;
            issue.reason = static_cast<FileReason>(reason);
            texts.insert(reasonText(issue));
        }
        QCOMPARE(texts.size(), last);
        QVERIFY(!texts.contains(QString()));
    }

    void everyFailureHasItsOwnWordsAndThePath()
    {
        QSet<QString> texts;
        using Reason = ConnectionFailure::Reason;
        const int last = int(Reason::UpgradeFailed);
        for (int reason = int(Reason::FolderMissing); reason <= last; ++reason) {
            ConnectionFailure failure;
            failure.reason = static_cast<Reason>(reason);
            failure.path = QStringLiteral("/data/50%1/index.db");
            failure.detail = QStringLiteral("in its own words");
            const QString text = connectionFailureText(failure);
            QVERIFY2(text.contains(failure.path) && text.contains(failure.detail), qPrintable(text));
            texts.insert(text);
        }
        QCOMPARE(texts.size(), last);
        QCOMPARE(connectionFailureText(ConnectionFailure()), QString());
    }
};

PM_TEST_MAIN(ImportReportTextTest)
#include "tst_importreporttext.moc"
