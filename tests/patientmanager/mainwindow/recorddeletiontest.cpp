#include "recorddeletion.h"
#include "deletionjournal.h"
#include "dicomfilebuilder.h"
#include "indexconnection.h"
#include "ordinaryuser.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDir>
#include <QDirIterator>
#include <QtTest>

#include <atomic>
#include <cerrno>
#include <memory>

namespace {

const QString patientTable = QStringLiteral("patient");
const QString studyTable = QStringLiteral("generalstudy");
const QString seriesTable = QStringLiteral("generalseries");
const QString imageTable = QStringLiteral("imageformat");
const std::atomic<bool> never{false};

} // namespace

/// Deletions on a real index with imported files: two patients, the first with two studies, the first of
/// these with two series of two images; all others hold one of each. Keys are those of the order of import.
class RecordDeletionTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        DicomFileBuilder builder;
        builder.set(
            0x00083010, QStringLiteral("copy")); // the mark of our copies, said by the files themselves
        int number = 0;
        const auto write = [&](const char *patient, const char *study, const char *series) {
            const QString uid = QStringLiteral("1.2.%1").arg(++number);
            builder.patient(QLatin1String(patient), QLatin1String(patient));
            builder.uids(QLatin1String(study), QLatin1String(series), uid);
            builder.write(source(QStringLiteral("%1.dcm").arg(number)));
        };
        write("A", "1.1", "1.1.1");
        write("A", "1.1", "1.1.1");
        write("A", "1.1", "1.1.2");
        write("A", "1.1", "1.1.2");
        write("A", "1.9", "1.9.1");
        write("B", "1.5", "1.5.1");
        m_changed.clear();
    }

    void cleanup() { m_index.reset(); }

    void eachBranchTakesWhatItNames_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QList<qlonglong>>("keys");
        QTest::addColumn<QString>("left");
        QTest::addColumn<QStringList>("told");
        const auto row = [](const char *name, const QString &table, const QList<qlonglong> &keys,
                             const char *left, const QStringList &told) {
            QTest::newRow(name) << table << keys << QString::fromLatin1(left) << told;
        };
        row("patient", patientTable, {1}, "1 1 1 1 1", {imageTable, seriesTable, studyTable, patientTable});
        row("study of two", studyTable, {1}, "2 2 2 2 2", {imageTable, seriesTable, studyTable});
        row("only study", studyTable, {3}, "1 2 3 5 5", {patientTable, imageTable, seriesTable, studyTable});
        row("series of two", seriesTable, {1}, "2 3 3 4 4", {seriesTable, imageTable});
        row("only series of a study of two", seriesTable, {3}, "2 2 3 5 5",
            {studyTable, seriesTable, imageTable});
        row("only series of all", seriesTable, {4}, "1 2 3 5 5",
            {patientTable, studyTable, seriesTable, imageTable});
        row("image of two", imageTable, {1}, "2 3 4 5 5", {imageTable});
        row("all images of a series", imageTable, {1, 2}, "2 3 3 4 4", {seriesTable, imageTable});
        row("only image of all", imageTable, {6}, "1 2 3 5 5",
            {patientTable, studyTable, seriesTable, imageTable});
        row("no image", imageTable, {}, "2 3 4 6 6", {imageTable});
        row("unknown table", QStringLiteral("images"), {1}, "2 3 4 6 6", {});
    }

    void eachBranchTakesWhatItNames()
    {
        QFETCH(QString, table);
        QFETCH(QList<qlonglong>, keys);
        import(ImportMode::Copy);
        for (const char *uid : {"1.2.1", "1.2.6"}) {
            m_index->query(
                QStringLiteral("INSERT INTO images (SOPInstanceUID) VALUES (?)"), {QLatin1String(uid)});
        }
        const DeletionReport report = run(table, keys);
        QVERIFY(!report.error.isValid() && report.left.isEmpty());
        QTEST(counts(), "left");
        QTEST(m_changed, "told");
        QCOMPARE(m_index
                     ->query(QStringLiteral("SELECT count(*) FROM images WHERE SOPInstanceUID NOT IN "
                                            "(SELECT SOPInstanceUID FROM imageformat)"))
                     .toInt(),
            0);
        QCOMPARE(m_index->count("deletion"), 0);
        for (const QString &file : stored()) {
            QVERIFY(
                m_index->query(QStringLiteral("SELECT count(*) FROM imageformat WHERE FilePath = ?"), {file})
                    .toInt());
        }
        // The folders of what has gone have gone, too; those of images stay.
        const int patients = m_index->count("patient");
        const QStringList folders = QDir(store()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(folders.size(), table == imageTable ? 2 : patients);
    }

    void theFirstKeyDecidesAboutParents_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QList<qlonglong>>("keys");
        QTest::addColumn<QString>("left");
        QTest::newRow("two of two studies leave the patient")
            << studyTable << QList<qlonglong>{1, 2} << QStringLiteral("2 1 1 1 1");
        QTest::newRow("the first study has a sister")
            << studyTable << QList<qlonglong>{1, 3} << QStringLiteral("2 1 1 1 1");
        QTest::newRow("the first study is the only one")
            << studyTable << QList<qlonglong>{3, 1} << QStringLiteral("1 1 1 1 1");
        QTest::newRow("two of two series leave the study")
            << seriesTable << QList<qlonglong>{1, 2} << QStringLiteral("2 3 2 2 2");
    }

    void theFirstKeyDecidesAboutParents()
    {
        QFETCH(QString, table);
        QFETCH(QList<qlonglong>, keys);
        import(ImportMode::Copy);
        QVERIFY(!run(table, keys).error.isValid());
        QTEST(counts(), "left");
    }

    void referencedFilesGoBySettingAlone_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<bool>("everyFile");
        QTest::addColumn<int>("left");
        QTest::newRow("patient, copies") << patientTable << false << 6;
        QTest::newRow("patient, all") << patientTable << true << 1;
        QTest::newRow("study, all") << studyTable << true << 2;
        QTest::newRow("series, all") << seriesTable << true << 4;
        QTest::newRow("image, all") << imageTable << true << 6;
    }

    void referencedFilesGoBySettingAlone()
    {
        QFETCH(QString, table);
        QFETCH(bool, everyFile);
        import(ImportMode::Reference);
        QVERIFY(run(table, {1}, everyFile).left.isEmpty());
        const QStringList files = filesBelow(m_index->folder() + QStringLiteral("/source"));
        QTEST(files.size(), "left");
    }

    void thousandsOfKeysAreOneDeletion()
    {
        constexpr int images = 10'000;
        const qlonglong series = m_index->addSeries(
            m_index->addStudy(
                m_index->addPatient(QStringLiteral("Big"), QStringLiteral("9")), QStringLiteral("9")),
            QStringLiteral("9.1"));
        m_index->query(
            QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                           "INSERT INTO imageformat (series_fk, SOPInstanceUID, FilePath) "
                           "SELECT ?, '9.1.' || i, '/nowhere/' || i FROM n"),
            {images, series});
        QList<qlonglong> keys;
        for (qlonglong key = 2; key <= images; ++key) {
            keys.append(key);
        }
        QVERIFY(!run(imageTable, keys).error.isValid());
        QCOMPARE(
            m_index->query(QStringLiteral("SELECT NumberOfPatientRelatedInstances FROM patient")).toInt(), 1);
    }

    void whatIsNotOursStays_data()
    {
        QTest::addColumn<QString>("change"); ///< of the index, with %1 for the folder of the test
        QTest::addColumn<QString>("kept"); ///< a file below that folder
        const QString path = QStringLiteral("UPDATE imageformat SET FilePath = '%1/%2' WHERE pk = 1");
        QTest::newRow("another record names it")
            << path.arg(QLatin1String("%1"), QLatin1String("store/B/x/y/z")) + QLatin1String("; ")
                + QStringLiteral("UPDATE imageformat SET FilePath = '%1/store/B/x/y/z' WHERE pk = 6")
            << QStringLiteral("store/B/x/y/z");
        QTest::newRow("a reference names it")
            << path.arg(QLatin1String("%1"), QLatin1String("store/B/x/y/z")) + QLatin1String("; ")
                + QStringLiteral("UPDATE imageformat SET FilePath = '%1/store/B/x/y/z', SourcePath = NULL, "
                                 "IrradiationEventUID = NULL WHERE pk = 6")
            << QStringLiteral("store/B/x/y/z");
        QTest::newRow("reached by a link") << path.arg(QLatin1String("%1"), QLatin1String("store/link/file"))
                                           << QStringLiteral("elsewhere/file");
        QTest::newRow("reached by dots")
            << path.arg(QLatin1String("%1"), QLatin1String("store/../elsewhere/file"))
            << QStringLiteral("elsewhere/file");
        QTest::newRow("of another index")
            << path.arg(QLatin1String("%1"), QLatin1String("other/store/p/s/e/file"))
            << QStringLiteral("other/store/p/s/e/file");
        QTest::newRow("not copied") << path.arg(QLatin1String("%1"), QLatin1String("elsewhere/file"))
                + QLatin1String("; ")
                + QStringLiteral("UPDATE imageformat SET IrradiationEventUID = '1.2.3' WHERE pk = 1")
                                    << QStringLiteral("elsewhere/file");
        QTest::newRow("a link is removed, not what it leads to") << path.arg(
            QLatin1String("%1"), QLatin1String("store/filelink")) << QStringLiteral("elsewhere/file");
    }

    void whatIsNotOursStays()
    {
        QFETCH(QString, change);
        QFETCH(QString, kept);
        import(ImportMode::Copy);
        const QString folder = m_index->folder();
        const QString file = folder + QLatin1Char('/') + kept;
        writeFile(file);
        writeFile(folder + QStringLiteral("/elsewhere/file"));
        QVERIFY(QFile::link(folder + QStringLiteral("/elsewhere"), store() + QStringLiteral("/link")));
        QVERIFY(
            QFile::link(folder + QStringLiteral("/elsewhere/file"), store() + QStringLiteral("/filelink")));
        for (const QString &statement : change.split(QStringLiteral("; "))) {
            m_index->query(QString(statement).replace(QLatin1String("%1"), folder));
        }
        const DeletionReport report = run(patientTable, {1});
        QVERIFY(!report.error.isValid() && report.left.isEmpty());
        QVERIFY(QFile::exists(file));
        QVERIFY(QDir(store()).exists());
        QCOMPARE(m_index->count("imageformat"), 1);
    }

    void aLockedFolderIsTold()
    {
        import(ImportMode::Copy);
        const QString locked = QFileInfo(pathOf(1)).path();
        const QString missing = pathOf(5);
        QVERIFY(QFile::remove(missing));
        QFile::setPermissions(m_index->folder(), QFile::Permissions(0x7755));
        QStringList own{store()};
        QDirIterator walk(store(), QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            own.append(walk.next());
        }
        QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner);
        DeletionReport report;
        {
            const OrdinaryUser user(own);
            QVERIFY(user.isReady());
            report = run(patientTable, {1});
        }
        QVERIFY(!report.error.isValid());
        QCOMPARE(report.left.size(), 2);
        QCOMPARE(QFileInfo(report.left.first().path).path(), locked);
        QCOMPARE(report.left.first().systemError, EACCES);
        QCOMPARE(counts(), QStringLiteral("1 1 1 1 3"));
        QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(FileDisposal::tryAgain(m_index->database(), report.left).isEmpty());
        QCOMPARE(counts(), QStringLiteral("1 1 1 1 1"));
    }

    void aBusyIndexLosesNothing()
    {
        import(ImportMode::Copy);
        const IndexConnection other(m_index->path());
        const WriteTransaction writing(other.database());
        QVERIFY(writing.isActive());
        IndexConnection::setLockWait(m_index->database(), 1);
        const DeletionReport report = run(patientTable, {1});
        QVERIFY(report.error.isValid() && !report.isPending);
        QCOMPARE(counts(), QStringLiteral("2 3 4 6 6"));
    }

    void imagesThatCameLaterSurviveTheFinish()
    {
        import(ImportMode::Copy);
        BegunDeletion begun;
        begun.keys = QList<qlonglong>{1};
        QVERIFY(!DeletionJournal(m_index->database()).note(&begun).isValid());
        const QString later = store() + QStringLiteral("/A/1.1/1.1.1/later.dcm");
        writeFile(later);
        m_index->addImage(1, QStringLiteral("1.2.99"), 9, later);
        RecordDeletion::finishBegun(m_index->database(), never);
        QVERIFY(QFile::exists(later));
        QCOMPARE(
            m_index->query(QStringLiteral("SELECT count(*) FROM imageformat WHERE series_fk = 1")).toInt(),
            1);
        // What has got nothing is gone with all that it had.
        QCOMPARE(counts(), QStringLiteral("2 2 2 2 2"));
    }

    /// The same files again: to the deletion they are new, whether their copies had gone or not.
    void imagesThatCameAgainSurviveTheFinish()
    {
        import(ImportMode::Copy);
        BegunDeletion begun;
        begun.level = RecordLevel::Image;
        begun.keys = QList<qlonglong>{1, 2, 5};
        QVERIFY(!DeletionJournal(m_index->database()).note(&begun).isValid());
        QVERIFY(QFile::remove(pathOf(1)));
        const ImportReport again =
            m_index->import({source(QStringLiteral("1.dcm")), source(QStringLiteral("5.dcm")),
                                source(QStringLiteral("6.dcm"))},
                ImportMode::Copy);
        QCOMPARE(again.of(FileVerdict::Replaced), 2);
        QCOMPARE(again.of(FileVerdict::AlreadyThere), 1);
        QVERIFY(!RecordDeletion::finishBegun(m_index->database(), never).error.isValid());
        QCOMPARE(counts(), QStringLiteral("2 3 4 5 5"));
        for (const char *uid : {"1.2.1", "1.2.5"}) {
            const QString path =
                m_index
                    ->query(QStringLiteral("SELECT FilePath FROM imageformat WHERE SOPInstanceUID = ?"),
                        {QLatin1String(uid)})
                    .toString();
            QVERIFY2(QFile::exists(path), uid);
        }
    }

    void whatHasARecordAgainIsNotTriedAgain()
    {
        import(ImportMode::Copy);
        const QString stray = store() + QStringLiteral("/stray");
        writeFile(stray);
        const QVector<FileLeft> left{{pathOf(1), EACCES}, {stray, EACCES}};
        QVERIFY(FileDisposal::tryAgain(m_index->database(), left).isEmpty());
        QVERIFY(QFile::exists(pathOf(1)) && !QFile::exists(stray));
    }

private:
    void import(ImportMode mode) const
    {
        QCOMPARE(m_index->import({source(QString())}, mode).of(FileVerdict::New), 6);
    }

    QString source(const QString &name) const
    {
        return m_index->folder() + QStringLiteral("/source/") + name;
    }
    QString store() const { return m_index->folder() + QStringLiteral("/store"); }
    QStringList stored() const { return filesBelow(store(), {QStringLiteral("*.dcm")}); }
    QString pathOf(qlonglong image) const
    {
        return m_index->query(QStringLiteral("SELECT FilePath FROM imageformat WHERE pk = ?"), {image})
            .toString();
    }

    /// Patients, studies, series, images, files of the store.
    QString counts() const
    {
        QStringList numbers;
        for (const QString &table : {patientTable, studyTable, seriesTable, imageTable}) {
            numbers.append(m_index->query(QStringLiteral("SELECT count(*) FROM %1").arg(table)).toString());
        }
        numbers.append(QString::number(stored().size()));
        return numbers.join(QLatin1Char(' '));
    }

    DeletionReport run(const QString &table, const QList<qlonglong> &keys, bool everyFile = false)
    {
        RecordDeletion deletion(m_index->database(), everyFile);
        m_changed.clear();
        connect(&deletion, &RecordDeletion::tableChanged, this,
            [this](const QString &name) { m_changed.append(name); });
        return deletion.run(table, keys);
    }

    std::unique_ptr<TemporaryIndex> m_index;
    QStringList m_changed; ///< tables told by the last deletion, in their order
};

PM_TEST_MAIN(RecordDeletionTest)
#include "recorddeletiontest.moc"
