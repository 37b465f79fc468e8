#include "dabasehelper.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"
#include "thumbnailfiles.h"

#include <QFileInfo>
#include <QtTest>

/// One patient with two studies; the first has two series, of two images and one.
class DabaseHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        const qlonglong patient = m_index->addPatient(QStringLiteral("A"), QStringLiteral("1"));
        const qlonglong study = m_index->addStudy(patient, QStringLiteral("1"));
        m_index->addStudy(patient, QStringLiteral("2"));
        const qlonglong series = m_index->addSeries(study, QStringLiteral("1.1"));
        const qlonglong other = m_index->addSeries(study, QStringLiteral("1.2"));
        m_index->addImage(series, QStringLiteral("1.1.1"));
        m_index->addImage(series, QStringLiteral("1.1.2"));
        m_index->addImage(other, QStringLiteral("1.2.1"));
        m_index->query(
            QStringLiteral("INSERT INTO images (SOPInstanceUID) SELECT SOPInstanceUID FROM imageformat"));
        m_index->query(
            QStringLiteral("INSERT INTO series (seriesUID) SELECT SeriesInstanceUID FROM generalseries"));
    }

    void cleanup() { m_index.reset(); }

    void parentsAndChildren()
    {
        DabaseHelper helper;
        QCOMPARE(helper.getPkFromFk(1, 1), (QList<qlonglong>{1, 2}));
        QCOMPARE(helper.getPkFromFk(2, 1), (QList<qlonglong>{1, 2}));
        QCOMPARE(helper.getPkFromFk(3, 1), (QList<qlonglong>{1, 2}));
        QCOMPARE(helper.getTableSize(3, 2), 1);
        QCOMPARE(helper.getPreFK(3, 3), qlonglong(2));
        QCOMPARE(helper.getPreFK(1, 2), qlonglong(1));
        QCOMPARE(helper.getPreFK(3, 99), qlonglong(0));
        QVERIFY(helper.getPkFromFk(7, 1).isEmpty() && helper.getPkFromFk(0, 1).isEmpty());
        QVERIFY(helper.deleteTable(2, {1, 99}));
        QCOMPARE(column("SELECT group_concat(pk) FROM imageformat"), QStringLiteral("3"));
    }

    void cleanUpLeavesTheRecords_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QList<qlonglong>>("keys");
        QTest::addColumn<QString>("images");
        QTest::addColumn<QString>("series");
        const auto row = [](const char *name, int level, const QList<qlonglong> &keys, const char *images,
                             const char *series) {
            QTest::newRow(name) << level << keys << QString::fromLatin1(images)
                                << QString::fromLatin1(series);
        };
        row("patient", 0, {1}, "", "");
        row("study without images", 1, {2}, "1.1.1,1.1.2,1.2.1", "1.1,1.2");
        row("series", 2, {1}, "1.2.1", "1.2");
        row("one image of two", 3, {1}, "1.1.2,1.2.1", "1.1,1.2");
        row("all images of a series", 3, {1, 2}, "1.2.1", "1.2");
        row("nothing", 3, {}, "1.1.1,1.1.2,1.2.1", "1.1,1.2");
    }

    void cleanUpLeavesTheRecords()
    {
        QFETCH(int, level);
        QFETCH(QList<qlonglong>, keys);
        QFETCH(QString, images);
        const ThumbnailFiles thumbnails(m_index->path());
        const QStringList uids{QStringLiteral("1.1.1"), QStringLiteral("1.1.2"), QStringLiteral("1.2.1")};
        for (const QString &uid : uids) {
            writeFile(thumbnails.pathOf(uid, QFileInfo(QCoreApplication::applicationFilePath())));
        }
        QVERIFY(DabaseHelper().DeleteDBTable(level, QString(), keys));
        QCOMPARE(
            column("SELECT group_concat(SOPInstanceUID) FROM (SELECT * FROM images ORDER BY 1)"), images);
        QTEST(column("SELECT group_concat(seriesUID) FROM (SELECT * FROM series ORDER BY 1)"), "series");
        QCOMPARE(column("SELECT count(*) FROM imageformat"), QStringLiteral("3"));
        QCOMPARE(column("SELECT count(*) FROM generalseries"), QStringLiteral("2"));
        for (const QString &uid : uids) {
            const bool isThere =
                QFileInfo::exists(thumbnails.pathOf(uid, QFileInfo(QCoreApplication::applicationFilePath())));
            QCOMPARE(isThere, images.split(QLatin1Char(',')).contains(uid));
        }
    }

    /// Strangers without an ID may share a UID.
    void aSeriesOfTwoStudiesKeepsItsRow()
    {
        m_index->addImage(m_index->addSeries(2, QStringLiteral("1.1")), QStringLiteral("9"));
        QVERIFY(DabaseHelper().DeleteDBTable(1, QString(), {1}));
        QCOMPARE(column("SELECT group_concat(seriesUID) FROM series"), QStringLiteral("1.1"));
    }

private:
    QString column(const char *sql) const { return m_index->query(QLatin1String(sql)).toString(); }

    std::unique_ptr<TemporaryIndex> m_index;
};

PM_TEST_MAIN(DabaseHelperTest)
#include "tst_dabasehelper.moc"
