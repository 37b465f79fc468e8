#include "archivemodel.h"
#include "logcopybar.h"
#include "plaintableview.h"
#include "sendjobmodel.h"
#include "sendlog.h"
#include "sendlogmodel.h"
#include "sendpaths.h"
#include "testmain.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPersistentModelIndex>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

SendJob makeJob(qint64 id, SendJobState state, qint64 accepted, qint64 failed)
{
    SendJob job;
    job.id = id;
    job.node = {QStringLiteral("ARCHIVE"), QStringLiteral("pacs"), 104};
    job.state = state;
    job.total = 400;
    job.accepted = accepted;
    job.failed = failed;
    return job;
}

SendObject makeObject(qint64 id)
{
    SendObject object;
    object.id = id;
    object.path = QStringLiteral("/%1.dcm").arg(id);
    object.state = SendObjectState::Failed;
    object.outcome.problem = StoreProblem::OutOfResources;
    object.outcome.status = 0xA700;
    return object;
}

/// A file of jobs with one, all of whose objects have failed.
void fillStore(const QString &path, int objects)
{
    SendStore store(path);
    SendJob job = makeJob(1, SendJobState::Ended, 0, 0);
    SendPaths::Listed listed;
    for (int i = 1; i <= objects; ++i) {
        listed.objects += makeObject(i);
    }
    if (!store.addJob(job, {}) || !SendPaths(store).add(job.id, listed)) {
        qFatal("the jobs cannot be written: %s", qPrintable(store.problem()));
    }
}

} // namespace

/// What the transfers window lists: jobs whose rows stay, and a log that is read as it comes into sight.
class TransferModelsTest : public QObject
{
    Q_OBJECT

private slots:
    /// An archive may be searched again while the series of a study are still being asked for.
    void seriesThatAreListedAgainReplaceTheOldOnes()
    {
        ArchiveModel model;
        const QString study = QStringLiteral("1.1");
        const QString series[] = {QStringLiteral("1.1.1"), QStringLiteral("1.1.2")};
        model.addStudies({{{QueryTag::studyUid, study}}});
        const QModelIndex row = model.index(0, 0, model.index(0, 0));
        QVERIFY(model.beginListing(row) && !model.beginListing(row));
        model.setSeries(study, {{{QueryTag::seriesUid, series[0]}}, {{QueryTag::seriesUid, series[1]}}}, {});
        QCOMPARE(model.rowCount(row), 2);
        model.setSeries(study, {{{QueryTag::seriesUid, series[1]}}}, {});
        QCOMPARE(model.seriesUids(), QStringList{series[1]});
        model.setHeld(RecordLevel::Series, {{series[0], 3}, {series[1], 4}});
        QVERIFY(!row.model()->index(0, ArchiveModel::HeldColumn, row).data().toString().isEmpty());
        model.setSeries(study, {}, QStringLiteral("Gone"));
        QVERIFY(model.seriesUids().isEmpty());
    }

    /// Archives need not tell of a study when its patient was born, or who has issued the number.
    void aStudyThatSaysLessIsOfTheListedPatient()
    {
        const auto record = [](const char *study, const char *born) {
            return QueryRecord{{QueryTag::patientId, QStringLiteral("7")},
                {QueryTag::patientName, QStringLiteral("Doe^Jane")},
                {QueryTag::studyUid, QLatin1String(study)}, {QueryTag::birthDate, QLatin1String(born)}};
        };
        ArchiveModel model;
        model.addPatients({record("", "19700101")});
        model.addStudies({record("1.1", ""), record("1.2", "19700101")});
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.rowCount(model.index(0, 0)), 2);
        model.addPatients({record("", "19800101")});
        model.addStudies({record("1.3", "")}); // nobody knows whose
        QCOMPARE(model.rowCount(), 3);
    }

    void jobsKeepTheirRows()
    {
        SendJobModel model;
        const QAbstractItemModelTester tester(&model);
        model.setJobs({makeJob(1, SendJobState::Ended, 398, 2), makeJob(2, SendJobState::Sending, 100, 0)});
        QCOMPARE(model.job(0).id, 2); // the latest first
        const QPersistentModelIndex chosen = model.index(0, SendJobModel::StateColumn);
        model.setJobs({makeJob(2, SendJobState::Sending, 200, 0), makeJob(3, SendJobState::Waiting, 0, 0)});
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(chosen.row(), 1);
        QCOMPARE(model.index(1, SendJobModel::ProgressColumn).data(SendJobModel::shareRole).toDouble(), 0.5);
        QVERIFY(model.index(1, SendJobModel::CountColumn)
                    .data()
                    .toString()
                    .contains(QStringLiteral("200 of 400")));
        QCOMPARE(model.rowOf(1), -1);
    }

    void aJobSaysWhyItWaits()
    {
        SendJobModel model;
        SendJob job = makeJob(1, SendJobState::Waiting, 0, 0);
        job.trouble.problem = NetworkProblem::Refused;
        job.nextTry = QDateTime::currentDateTime();
        model.setJobs({job});
        QVERIFY(model.index(0, SendJobModel::NoticeColumn)
                    .data()
                    .toString()
                    .startsWith(QStringLiteral("Nothing listens")));
        job.state = SendJobState::Cancelled; // it waits for nothing any more
        job.skippedFiles = 3;
        model.setJobs({job});
        QVERIFY(!model.index(0, SendJobModel::NoticeColumn)
                     .data()
                     .toString()
                     .contains(QStringLiteral("Nothing listens")));
    }

    void theLogIsReadAsItComesIntoSight()
    {
        static constexpr int length = 100'000;
        QVector<int> reads;
        SendLogModel model;
        model.show(
            [&reads](int first, int count) {
                reads += first;
                QVector<SendObject> page;
                for (int i = first; i < qMin(first + count, length); ++i) {
                    page += makeObject(i + 1);
                }
                return page;
            },
            length);
        const auto text = [&model](
                              int row, int column) { return model.index(row, column).data().toString(); };
        QCOMPARE(text(0, SendLogModel::FileColumn), QStringLiteral("/1.dcm"));
        QCOMPARE(text(0, SendLogModel::ReasonColumn), QStringLiteral("Out of resources (A700)"));
        QCOMPARE(text(length - 1, SendLogModel::FileColumn), QStringLiteral("/100000.dcm"));
        QCOMPARE(reads.size(), 2);
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        model.refresh(length + 5); // its rows are not there yet: a job that is still being listed
        QCOMPARE(model.rowCount(), length + 5);
        QVERIFY(text(length + 4, SendLogModel::FileColumn).isEmpty());
        QCOMPARE(resets.count(), 0);
        model.refresh(2); // failures that are tried again
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(text(1, SendLogModel::FileColumn), QStringLiteral("/2.dcm"));
    }

    /// The list does not read its rows for it, the clipboard is left alone until all is there, and the window
    /// goes on meanwhile.
    void aLongLogIsCopiedBesideTheWindow()
    {
        static constexpr int length = 100'000;
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("jobs"));
        fillStore(path, length);
        const SendLog log(path);
        int reads = 0;
        SendLogModel model;
        PlainTableView list;
        list.setModel(&model);
        model.show(
            [&](int first, int count) {
                ++reads;
                return log.objects(1, first, count, false);
            },
            length);
        LogCopyBar bar(path, &list);
        bar.setLog(1, false, length);
        QClipboard *clipboard = QGuiApplication::clipboard();
        clipboard->setText(QStringLiteral("before"));
        list.selectAll();
        list.copyRows();
        QCOMPARE(clipboard->text(), QStringLiteral("before"));
        auto *stop = bar.findChild<QPushButton *>(QStringLiteral("stopCopying"));
        QVERIFY(stop->isEnabled());
        stop->click();
        list.copyRows();
        QTRY_VERIFY_WITH_TIMEOUT(!stop->isEnabled(), 60000);
        QCOMPARE(reads, 0);
        const QStringList lines = clipboard->text().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), length + 1);
        QVERIFY(lines[length - 1].startsWith(QStringLiteral("/100000.dcm\tFailed")));
        QVERIFY(stateOf(bar).contains(QStringLiteral("100")));
    }

    void whatIsCopiedIsWhatWasSelectedUpToALimit()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("jobs"));
        fillStore(path, 10);
        QStandardItemModel rows(10, 1);
        PlainTableView list;
        list.setModel(&rows);
        LogCopyBar bar(path, &list, nullptr, 3);
        bar.setLog(1, false, 10);
        for (const int row : {7, 1, 2}) {
            list.selectionModel()->select(rows.index(row, 0), QItemSelectionModel::Select);
        }
        const auto copied = [&bar] {
            bar.copy();
            const auto *stop = bar.findChild<QPushButton *>(QStringLiteral("stopCopying"));
            QString names;
            if (QTest::qWaitFor([stop] { return !stop->isEnabled(); })) {
                for (const QString &line : QGuiApplication::clipboard()->text().split(QLatin1Char('\n'))) {
                    names += line.section(QLatin1Char('.'), 0, 0);
                }
            }
            return names;
        };
        QCOMPARE(copied(), QStringLiteral("/2/3/8"));
        QVERIFY(!stateOf(bar).contains(QStringLiteral("no more")));
        list.clearSelection();
        QCOMPARE(copied(), QStringLiteral("/1/2/3"));
        QVERIFY(stateOf(bar).contains(QStringLiteral("no more")));
    }

private:
    static QString stateOf(const LogCopyBar &bar)
    {
        return bar.findChild<QLabel *>(QStringLiteral("copyState"))->text();
    }
};

PM_TEST_MAIN(TransferModelsTest)
#include "tst_transfermodels.moc"
