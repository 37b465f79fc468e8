#include "cloudsession.h"
#include "dicomfilebuilder.h"
#include "downloadengine.h"
#include "indexconnection.h"
#include "lineproxy.h"
#include "objectspool.h"
#include "oddservice.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"
#include "websession.h"

#include <QtTest>

namespace {

constexpr int mostMs = 60000;
constexpr int imagesOfSeries = 30;

CloudSession sessionAt(quint16 port, const char *password = WebArchive::password)
{
    return webSessionAt(QStringLiteral("http://127.0.0.1:%1/dicom-web").arg(port), password);
}

QString seriesUid(int study, int series)
{
    return QStringLiteral("1.2.3.%1.%2").arg(study).arg(series);
}

DownloadStudy wanted(int study)
{
    return {QStringLiteral("1.2.3.%1").arg(study), QStringLiteral("Study %1").arg(study),
        {{seriesUid(study, 1), imagesOfSeries}, {seriesUid(study, 2), -1}}};
}

/// An index and the engine of its downloads.
struct Workplace
{
    explicit Workplace(const CloudSession &itsSession)
        : session(itsSession)
    {
        open();
    }

    void open()
    {
        engine = std::make_unique<DownloadEngine>(index.path());
        engine->setSession(session);
    }
    DownloadState state(int study = 1) const
    {
        for (const DownloadTally &tally : engine->tallies()) {
            if (tally.studyUid == wanted(study).studyUid) {
                return tally.state;
            }
        }
        return DownloadState::Waiting;
    }
    bool isIn(DownloadState state) const { return this->state() == state; }
    int images() const { return index.count("imageformat"); }
    /// Every record has its file in the store, and no file of the store is without one.
    bool isWhole() const
    {
        const QStringList files = filesBelow(index.folder(), {QStringLiteral("*.dcm")});
        QStringList recorded =
            index.query(QStringLiteral("SELECT group_concat(FilePath, char(10)) FROM imageformat"))
                .toString()
                .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        recorded.sort();
        return recorded == files;
    }
    int flagged() const
    {
        return index.query(QStringLiteral("SELECT count(*) FROM images WHERE Cloudflag = 1")).toInt();
    }
    /// Series whose counters say that all of them is in the cloud.
    int uploadedSeries() const
    {
        return index.query(QStringLiteral("SELECT count(*) FROM series WHERE recvnum = upCloudnum")).toInt();
    }

    TemporaryIndex index;
    CloudSession session;
    std::unique_ptr<DownloadEngine> engine;
};

} // namespace

/// Two studies of two series each, in a real archive.
class DownloadTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_archive = WebArchive::start();
        for (int study = 1; study <= 2; ++study) {
            for (int series = 1; series <= 2; ++series) {
                for (int image = 1; image <= imagesOfSeries; ++image) {
                    const QString uid = QStringLiteral("%1.%2").arg(seriesUid(study, series)).arg(image);
                    DicomFileBuilder()
                        .patient(QString::number(study), QStringLiteral("Patient^%1").arg(study))
                        .uids(wanted(study).studyUid, seriesUid(study, series), uid)
                        .instanceNumber(image)
                        .write(m_files.filePath(uid));
                }
            }
        }
        m_archive->fill({m_files.path()}, {QStringLiteral("+sd"), QStringLiteral("+r")});
        m_proxy = std::make_unique<LineProxy>(m_archive->httpPort());
    }

    void init()
    {
        m_proxy->release();
        m_proxy->forget();
    }

    void studiesIntoTheIndex()
    {
        Workplace place(sessionAt(m_archive->httpPort()));
        QSignalSpy imported(place.engine.get(), &DownloadEngine::imported);
        place.engine->add(wanted(1));
        place.engine->add(wanted(2));
        QTRY_COMPARE_WITH_TIMEOUT(place.state(1), DownloadState::Finished, mostMs);
        QTRY_COMPARE_WITH_TIMEOUT(place.state(2), DownloadState::Finished, mostMs);
        QCOMPARE(place.images(), 4 * imagesOfSeries);
        QVERIFY(place.isWhole());
        QCOMPARE(place.flagged(), 4 * imagesOfSeries);
        QCOMPARE(place.uploadedSeries(), 4);
        QTRY_VERIFY(!imported.isEmpty());
        const DownloadTally tally = place.engine->tallies().constFirst();
        QCOMPARE(tally.indexed, 2 * imagesOfSeries);
        QCOMPARE(tally.expected, 2 * imagesOfSeries);
        place.engine.reset();
        QVERIFY(!QDir(ObjectSpool::folderOf(place.index.path(), SpoolKind::Downloaded)).exists());

        place.open(); // what is finished is not asked for again
        place.engine->add(wanted(1));
        QTRY_COMPARE_WITH_TIMEOUT(place.state(1), DownloadState::Finished, mostMs);
        QCOMPARE(place.engine->tallies().size(), 1);
        QCOMPARE(place.images(), 4 * imagesOfSeries);
    }

    void lineThatIsCutAndAgain()
    {
        Workplace place(sessionAt(m_proxy->serverPort()));
        m_proxy->holdAfter(20000);
        place.engine->add(wanted(1));
        QTRY_VERIFY_WITH_TIMEOUT(m_proxy->isHolding(), mostMs);
        QTRY_VERIFY_WITH_TIMEOUT(place.images() > 0, mostMs);
        const int before = place.images();
        m_proxy->forget();
        m_proxy->cut();
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Finished, mostMs);
        QCOMPARE(place.images(), 2 * imagesOfSeries);
        QCOMPARE(place.flagged(), 2 * imagesOfSeries);
        QVERIFY(place.isWhole());
        QVERIFY2(m_proxy->asked().count("GET ") <= 2 * imagesOfSeries - before + 6,
            "what is there was fetched again");
    }

    void endInTheMiddleAndAnotherStart()
    {
        Workplace place(sessionAt(m_proxy->serverPort()));
        m_proxy->holdAfter(20000);
        place.engine->add(wanted(1));
        QTRY_VERIFY_WITH_TIMEOUT(m_proxy->isHolding() && place.images() > 0, mostMs);
        place.engine.reset();
        m_proxy->cut();
        QVERIFY(place.isWhole());
        place.open();
        QTRY_COMPARE_WITH_TIMEOUT(place.images(), 2 * imagesOfSeries, mostMs);
        QTRY_COMPARE_WITH_TIMEOUT(place.uploadedSeries(), 2, mostMs);
    }

    void stoppedAndResumed()
    {
        Workplace place(sessionAt(m_proxy->serverPort()));
        m_proxy->holdAfter(20000);
        place.engine->add(wanted(1));
        QTRY_VERIFY_WITH_TIMEOUT(m_proxy->isHolding(), mostMs);
        place.engine->stop(wanted(1).studyUid);
        QTRY_VERIFY(place.isIn(DownloadState::Stopped));
        m_proxy->release();
        place.engine.reset();
        m_proxy->forget();
        place.open(); // it stays stopped
        QTRY_VERIFY(place.isIn(DownloadState::Stopped));
        QCOMPARE(m_proxy->asked(), QByteArray());
        place.engine->resume(wanted(1).studyUid);
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Finished, mostMs);
        QCOMPARE(place.images(), 2 * imagesOfSeries);
    }

    void sessionThatHasEnded()
    {
        Workplace place(sessionAt(m_archive->httpPort(), "wrong"));
        QSignalSpy refused(place.engine.get(), &DownloadEngine::sessionRefused);
        place.engine->add(wanted(1));
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::NeedsSession, mostMs);
        QTRY_COMPARE(refused.size(), 1);
        place.engine->setSession(sessionAt(m_archive->httpPort()));
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Finished, mostMs);
        QCOMPARE(place.images(), 2 * imagesOfSeries);
        QCOMPARE(refused.size(), 1);
    }

    /// Where the user is signed in elsewhere, nobody else is asked for it.
    void anotherService()
    {
        Workplace place(sessionAt(m_proxy->serverPort()));
        m_proxy->holdAfter(0);
        place.engine->add(wanted(1));
        QTRY_VERIFY_WITH_TIMEOUT(!m_proxy->asked().isEmpty(), mostMs);
        place.engine->setSession(sessionAt(m_archive->httpPort()));
        QTRY_COMPARE(place.state(), DownloadState::NeedsSession);

        // What is asked for after an end of the session is of its service, too.
        place.engine->setSession(place.session);
        place.engine->setSession({});
        place.engine->add(wanted(2));
        place.engine->setSession(sessionAt(m_archive->httpPort()));
        QTRY_COMPARE(place.state(2), DownloadState::NeedsSession);
    }

    /// What was fetched for it is still on its way into an index that somebody else writes to.
    void removedAndAskedForAgain()
    {
        Workplace place(sessionAt(m_archive->httpPort()));
        {
            const IndexConnection other(place.index.path());
            const WriteTransaction writing(other.database());
            QVERIFY(writing.isActive());
            place.engine->add(wanted(1));
            const auto fetched = [&] {
                const QVector<DownloadTally> &tallies = place.engine->tallies();
                return tallies.isEmpty() ? 0 : tallies.constFirst().fetched;
            };
            QTRY_COMPARE_WITH_TIMEOUT(fetched(), 2 * imagesOfSeries, mostMs);
            place.engine->remove(wanted(1).studyUid);
            place.engine->add(wanted(1));
        }
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Finished, mostMs);
        QCOMPARE(place.images(), 2 * imagesOfSeries);
        QVERIFY(place.isWhole());
    }

    void onlyWhatIsMissing()
    {
        Workplace place(sessionAt(m_proxy->serverPort()));
        place.index.import(filesBelow(m_files.path(), {seriesUid(1, 1) + QStringLiteral(".*")}).mid(0, 20));
        place.engine->add(wanted(1));
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Finished, mostMs);
        QCOMPARE(place.images(), 2 * imagesOfSeries);
        QCOMPARE(place.flagged(), 2 * imagesOfSeries - 20); // nobody knows of the others
        QCOMPARE(m_proxy->asked().count("/instances/"), imagesOfSeries - 20);
    }

    void whatTheServiceDoesNotHave()
    {
        Workplace place(sessionAt(m_archive->httpPort()));
        place.engine->add({wanted(1).studyUid, {}, {{QStringLiteral("9.9"), -1}, {seriesUid(1, 1), -1}}});
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Failed, mostMs);
        const DownloadTally tally = place.engine->tallies().constFirst();
        QCOMPARE(tally.seriesDone, 1);
        QVERIFY(!tally.failure.isNone());
        QCOMPARE(place.images(), imagesOfSeries);

        place.session = {};
        place.engine->setSession(place.session);
        place.engine->resume(wanted(1).studyUid);
        QTRY_COMPARE(place.state(), DownloadState::NeedsSession);
        place.engine.reset();
        place.open(); // after a restart it is still wanted
        QTRY_COMPARE(place.state(), DownloadState::NeedsSession);
    }

    /// A good answer is no proof that it holds what was asked for.
    void whatTheServiceLeavesOut_data()
    {
        QTest::addColumn<bool>("isAnother");
        QTest::addColumn<int>("expected");
        QTest::newRow("nothing of what it has announced") << false << imagesOfSeries;
        QTest::newRow("an object of another patient") << true << -1;
    }

    void whatTheServiceLeavesOut()
    {
        QFETCH(const bool, isAnother);
        QFETCH(const int, expected);
        const QByteArray object = bytesOf(m_files.filePath(seriesUid(2, 1) + QStringLiteral(".1")));
        const OddService odd(httpAnswer("200 OK", "multipart/related; type=\"application/dicom\"; boundary=b",
            isAnother ? "--b\r\nContent-Type: application/dicom\r\n\r\n" + object + "\r\n--b--\r\n"
                      : QByteArray("--b--\r\n")));
        Workplace place(sessionAt(odd.serverPort()));
        place.engine->add({wanted(1).studyUid, {}, {{seriesUid(1, 1), expected}}});
        QTRY_COMPARE_WITH_TIMEOUT(place.state(), DownloadState::Failed, mostMs);
        QCOMPARE(place.engine->tallies().constFirst().failure.problem, WebProblem::Incomplete);
        QCOMPARE(place.images(), 0);
        QCOMPARE(place.flagged(), 0);
        const QString aside =
            QFileInfo(place.index.path()).absoluteFilePath() + QStringLiteral(".downloaded/aside");
        QCOMPARE(!QDir(aside).isEmpty(), isAnother);
    }

    void whatIsKeptAsideHasABound()
    {
        const QTemporaryDir folder;
        ObjectSpool spool(folder.filePath(QStringLiteral("index.db")), false, SpoolKind::Downloaded);
        QCOMPARE(spool.open(), 0);
        const QByteArray object = QFile::encodeName(spool.folder() + QStringLiteral("/object.dcm"));
        const auto keep = [&] {
            writeFile(QFile::decodeName(object), "object");
            return spool.keepAside(object);
        };
        QStringList kept;
        for (int number = 0; number < ObjectSpool::mostDownloadsAside; ++number) {
            kept.append(keep());
        }
        QVERIFY(!kept.contains(QString()));
        QVERIFY(keep().isEmpty());
        QVERIFY(!QFile::exists(QFile::decodeName(object)));
        QVERIFY(QFile::remove(kept.takeFirst())); // as people do
        QVERIFY(!keep().isEmpty());
    }

private:
    QTemporaryDir m_files;
    std::unique_ptr<DicomServer> m_archive;
    std::unique_ptr<LineProxy> m_proxy;
};

PM_TEST_MAIN(DownloadTest)
#include "tst_download.moc"
