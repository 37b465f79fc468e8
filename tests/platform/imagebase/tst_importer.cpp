#include "dicomfilebuilder.h"
#include "importer.h"
#include "indexconnection.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <algorithm>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

Q_DECLARE_METATYPE(ImportMode)

namespace {

/// A folder of files to import and an index for them.
class Scene
{
public:
    Scene() { request.databasePath = index.path(); }

    QString file(const QString &name) const { return m_source.filePath(name); }
    void dicom(const QString &name, int instance, const QString &description = QStringLiteral("first")) const
    {
        DicomFileBuilder()
            .uids(QStringLiteral("1.2.3"), QStringLiteral("1.2.3.4"),
                QStringLiteral("1.2.3.4.%1").arg(instance))
            .instanceNumber(instance)
            .set(0x00204000, description)
            .write(file(name));
    }
    ImportRequest whole() const
    {
        ImportRequest now = request;
        now.paths = QStringList{m_source.path()};
        return now;
    }
    ImportReport import() const { return Importer(whole()).run(); }
    QString filePath(int instance) const
    {
        return index
            .query(QStringLiteral("SELECT FilePath FROM imageformat WHERE InstanceNumber = ?"), {instance})
            .toString();
    }
    /// All files of the store but the mark that says whose it is.
    QStringList stored() const
    {
        QStringList files = filesBelow(store());
        files.removeOne(store() + QStringLiteral(".index"));
        return files;
    }
    QString store() const { return index.folder() + QStringLiteral("/store/"); }

    TemporaryIndex index;
    ImportRequest request;

private:
    QTemporaryDir m_source;
};

QString summary(const ImportReport &report)
{
    QStringList parts;
    for (int i = 0; i < int(FileVerdict::Count); ++i) {
        parts.append(QString::number(report.of(static_cast<FileVerdict>(i))));
    }
    return parts.join(QLatin1Char(' '));
}

} // namespace

class TestImporter : public QObject
{
    Q_OBJECT

private slots:
    // found = new + already there + replaced + media directories + not DICOM + unreadable + refused + skipped
    void givesEachFileItsVerdict()
    {
        const Scene scene;
        scene.dicom(QStringLiteral("a/1.dcm"), 1);
        scene.dicom(QStringLiteral("a/2.dcm"), 2);
        QVERIFY(QFile::copy(scene.file(QStringLiteral("a/1.dcm")), scene.file(QStringLiteral("a/twin.dcm"))));
        scene.dicom(QStringLiteral("a/other bytes.dcm"), 2, QStringLiteral("second"));
        scene.dicom(QStringLiteral("a/.hidden.dcm"), 3);
        writeFile(scene.file(QStringLiteral("notes.txt")), "some text\n");
        writeFile(scene.file(QStringLiteral("empty")), "");
        // Of a patient who has nothing else: a refused file leaves no parents.
        DicomFileBuilder()
            .patient(QStringLiteral("Nobody"), QStringLiteral("Nobody"))
            .without(0x00080018)
            .write(scene.file(QStringLiteral("no uid.dcm")));
        DicomFileBuilder()
            .uids(QStringLiteral("../../x"), QStringLiteral("1.2"), QStringLiteral("1.3"))
            .write(scene.file(QStringLiteral("bad uid.dcm")));
        QVERIFY(QFile::link(scene.file(QStringLiteral("a")), scene.file(QStringLiteral("a/loop"))));
        QVERIFY(QFile::link(QStringLiteral("nowhere"), scene.file(QStringLiteral("broken"))));
        QCOMPARE(mkfifo(QFile::encodeName(scene.file(QStringLiteral("fifo"))).constData(), 0600), 0);

        const ImportReport report = scene.import();
        QCOMPARE(summary(report), QStringLiteral("2 2 0 0 2 0 2 4"));
        QCOMPARE(report.found(), 12);
        QCOMPARE(int(report.end), int(ImportEnd::Complete));
        QCOMPARE(scene.index.count("imageformat"), 2);
        QCOMPARE(scene.index.count("patient"), 1);
        QMap<QString, FileReason> reasons;
        for (const ImportIssue &issue : report.issues()) {
            reasons.insert(QFileInfo(issue.path).fileName(), issue.reason);
        }
        QCOMPARE(reasons.value(QStringLiteral("loop")), FileReason::LinkLoop);
        QCOMPARE(reasons.value(QStringLiteral("broken")), FileReason::BrokenLink);
        QCOMPARE(reasons.value(QStringLiteral("fifo")), FileReason::NotARegularFile);
        QCOMPARE(reasons.value(QStringLiteral("no uid.dcm")), FileReason::MissingUid);
        QCOMPARE(reasons.value(QStringLiteral("bad uid.dcm")), FileReason::MalformedUid);
        QCOMPARE(reasons.size(), 9);
        QVERIFY(report.retryPaths().contains(scene.file(QStringLiteral("no uid.dcm"))));
        QVERIFY(!report.retryPaths().contains(scene.file(QStringLiteral("notes.txt"))));
    }

    void doesOnlyWhatIsMissing_data()
    {
        QTest::addColumn<ImportMode>("mode");
        QTest::newRow("reference") << ImportMode::Reference;
        QTest::newRow("copy") << ImportMode::Copy;
    }

    void doesOnlyWhatIsMissing()
    {
        QFETCH(ImportMode, mode);
        Scene scene;
        scene.request.mode = mode;
        for (int i = 1; i <= 70; ++i) {
            scene.dicom(QStringLiteral("%1.dcm").arg(i), i);
        }
        QCOMPARE(summary(scene.import()), QStringLiteral("70 0 0 0 0 0 0 0"));
        const QStringList stored = scene.stored();
        scene.dicom(QStringLiteral("71.dcm"), 71);
        QCOMPARE(summary(scene.import()), QStringLiteral("1 70 0 0 0 0 0 0"));
        if (mode == ImportMode::Copy) {
            QCOMPARE(stored.size(), 70);
            QVERIFY(QFile::remove(scene.filePath(5)));
            QCOMPARE(summary(scene.import()), QStringLiteral("0 70 1 0 0 0 0 0"));
            QVERIFY(QFile::exists(scene.filePath(5)));
            QCOMPARE(scene.stored().size(), 71);
        } else {
            QVERIFY(stored.isEmpty());
        }
    }

    void copiesIntoTheStore()
    {
        Scene scene;
        scene.request.mode = ImportMode::Copy;
        scene.dicom(QStringLiteral("1.dcm"), 1);
        scene.import();
        const QString path = scene.filePath(1);
        QVERIFY2(path.startsWith(scene.index.folder() + QStringLiteral("/store/ID1-")), qPrintable(path));
        QVERIFY(path.endsWith(QStringLiteral("/1.2.3/1.2.3.4/1.2.3.4.1.dcm")));
        QCOMPARE(bytesOf(path), bytesOf(scene.file(QStringLiteral("1.dcm"))));
        QCOMPARE(scene.index.query(QStringLiteral("SELECT IrradiationEventUID FROM imageformat")).toString(),
            QStringLiteral("copy"));
        QCOMPARE(scene.stored(), QStringList{path});
        // A file that could not be removed yet keeps its place: a new copy there would be removed in its
        // stead.
        scene.index.query(QStringLiteral("DELETE FROM patient"));
        QVERIFY(QFile::remove(path) && QDir().mkpath(path + QStringLiteral("/in the way")));
        scene.index.query(QStringLiteral("INSERT INTO obsoletefile VALUES (?)"), {path});
        QCOMPARE(summary(scene.import()), QStringLiteral("1 0 0 0 0 0 0 0"));
        QVERIFY(scene.filePath(1) != path && QFile::exists(scene.filePath(1)));
        // Importing the folder that holds the index does not import its store.
        ImportRequest again = scene.request;
        again.paths = QStringList{scene.index.folder()};
        const ImportReport report = Importer(again).run();
        QCOMPARE(report.of(FileVerdict::New), 0);
        QCOMPARE(scene.index.count("imageformat"), 1);
    }

    /// Whatever a file calls its patient or itself.
    void copiesNothingOutOfTheStore()
    {
        const QTemporaryDir around;
        const QByteArray temporary = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(around.path()));
        Scene scene;
        qputenv("TMPDIR", temporary);
        const auto outside = [&] {
            QStringList files = filesBelow(around.path());
            const auto isOurs = [&scene](const QString &path) {
                return path.startsWith(scene.store()) || path.startsWith(scene.index.path());
            };
            files.erase(std::remove_if(files.begin(), files.end(), isOurs), files.end());
            return files;
        };
        scene.request.mode = ImportMode::Copy;
        const QStringList ids{QStringLiteral("../../up"), QStringLiteral("/etc/passwd"), QStringLiteral(".."),
            QStringLiteral("CON"), QString(300, QLatin1Char('x'))};
        const QStringList badUids{QStringLiteral("../../x"), QStringLiteral("/1.2"),
            QStringLiteral("1.2/../3"), QStringLiteral("1.") + QString(300, QLatin1Char('2'))};
        int number = 0;
        for (const QString &id : ids) {
            const QString uid = QStringLiteral("1.9.%1").arg(++number);
            DicomFileBuilder().patient(id, id).uids(uid, uid, uid).write(scene.file(uid));
        }
        for (const QString &uid : badUids) {
            const QString good = QStringLiteral("1.9.%1").arg(++number);
            DicomFileBuilder().uids(uid, good, good).write(scene.file(good));
            DicomFileBuilder().uids(good, uid, good).write(scene.file(good + QLatin1Char('s')));
            DicomFileBuilder().uids(good, good, uid).write(scene.file(good + QLatin1Char('i')));
        }
        const QStringList before = outside();
        const ImportReport report = scene.import();
        QCOMPARE(report.of(FileVerdict::New), ids.size());
        QCOMPARE(report.of(FileVerdict::Refused), 3 * badUids.size());
        QCOMPARE(outside(), before);
        const QRegularExpression place(QRegularExpression::escape(scene.index.folder())
            + QStringLiteral("/store/[-\\w]+(/[\\d.]+){3}\\.dcm"));
        const QStringList stored = scene.stored();
        QCOMPARE(
            stored.filter(QRegularExpression(QRegularExpression::anchoredPattern(place.pattern()))).size(),
            ids.size());
        for (const QString &path : stored) {
            QCOMPARE(scene.index
                         .query(QStringLiteral("SELECT count(*) FROM imageformat WHERE FilePath = ?"), {path})
                         .toInt(),
                1);
        }
    }

    void takesFiles()
    {
        Scene scene;
        scene.request.mode = ImportMode::Take;
        scene.dicom(QStringLiteral("1.dcm"), 1);
        const QByteArray first = bytesOf(scene.file(QStringLiteral("1.dcm")));
        QVERIFY(QFile::link(scene.file(QStringLiteral("1.dcm")), scene.file(QStringLiteral("0 link.dcm"))));
        writeFile(scene.file(QStringLiteral("notes.txt")), "some text\n");
        QCOMPARE(summary(scene.import()), QStringLiteral("1 1 0 0 1 0 0 0"));
        QCOMPARE(scene.stored(), QStringList{scene.filePath(1)});
        QVERIFY(!QFileInfo(scene.filePath(1)).isSymLink());
        QCOMPARE(bytesOf(scene.filePath(1)), first);
        QVERIFY(!QFile::exists(scene.file(QStringLiteral("1.dcm"))));
        QVERIFY(QFile::exists(scene.file(QStringLiteral("notes.txt"))));
        QCOMPARE(scene.index.query(QStringLiteral("SELECT IrradiationEventUID FROM imageformat")).toString(),
            QStringLiteral("copy"));

        // A second name that a killed import left in the store is no obstacle; other bytes stay where they
        // are.
        scene.dicom(QStringLiteral("2.dcm"), 2);
        const QString orphan = QFileInfo(scene.filePath(1)).path() + QStringLiteral("/1.2.3.4.2.dcm");
        QCOMPARE(link(QFile::encodeName(scene.file(QStringLiteral("2.dcm"))), QFile::encodeName(orphan)), 0);
        scene.dicom(QStringLiteral("3 other.dcm"), 1, QStringLiteral("second"));
        QCOMPARE(summary(scene.import()), QStringLiteral("1 1 0 0 1 0 0 0"));
        QCOMPARE(scene.stored(), (QStringList{scene.filePath(1), orphan}));
        QVERIFY(!QFile::exists(scene.file(QStringLiteral("2.dcm"))));
        QVERIFY(QFile::exists(scene.file(QStringLiteral("3 other.dcm"))));
        QCOMPARE(bytesOf(scene.filePath(1)), first);

        scene.request.policy = DuplicatePolicy::TakeNew;
        QCOMPARE(summary(scene.import()), QStringLiteral("0 0 1 0 1 0 0 0"));
        QVERIFY(!QFile::exists(scene.file(QStringLiteral("3 other.dcm"))));
        QCOMPARE(scene.stored().size(), 2);
        QVERIFY(bytesOf(scene.filePath(1)) != first);
    }

    void followsThePolicyForOtherBytes()
    {
        Scene scene;
        scene.request.mode = ImportMode::Copy;
        scene.dicom(QStringLiteral("a.dcm"), 1, QStringLiteral("old"));
        scene.import();
        const QString oldPath = scene.filePath(1);
        const QByteArray old = bytesOf(oldPath);
        scene.dicom(QStringLiteral("b.dcm"), 1, QStringLiteral("new"));
        const ImportReport kept = scene.import();
        QCOMPARE(summary(kept), QStringLiteral("0 2 0 0 0 0 0 0"));
        QCOMPARE(kept.issues().size(), 1);
        QCOMPARE(kept.issues().first().detail, oldPath);
        QCOMPARE(bytesOf(scene.filePath(1)), old);

        scene.index.query(QStringLiteral("UPDATE generalseries SET Status = '已上传'"));
        scene.index.query(
            QStringLiteral("UPDATE patient SET Status = '已上传', updated_time = '2001-01-01 00:00:00'"));
        scene.request.policy = DuplicatePolicy::TakeNew;
        QCOMPARE(summary(scene.import()), QStringLiteral("0 1 1 0 0 0 0 0"));
        QCOMPARE(scene.index
                     .query(QStringLiteral(
                         "SELECT generalseries.Status || patient.Status || (updated_time > '2002') "
                         "FROM generalseries, patient"))
                     .toString(),
            QStringLiteral("未上传未上传1"));
        QCOMPARE(bytesOf(scene.filePath(1)), bytesOf(scene.file(QStringLiteral("b.dcm"))));
        QCOMPARE(scene.stored(), QStringList{scene.filePath(1)});
        QCOMPARE(scene.index.count("obsoletefile"), 0);
    }

    void takesAFileThatMovedOrChanged()
    {
        const Scene scene;
        scene.dicom(QStringLiteral("here.dcm"), 1);
        scene.import();
        QVERIFY(
            QFile::rename(scene.file(QStringLiteral("here.dcm")), scene.file(QStringLiteral("there.dcm"))));
        QCOMPARE(summary(scene.import()), QStringLiteral("0 0 1 0 0 0 0 0"));
        QCOMPARE(scene.filePath(1), scene.file(QStringLiteral("there.dcm")));
        // Edited where it lies, into another patient: the record follows and the old parents go.
        DicomFileBuilder()
            .patient(QStringLiteral("ID2"), QStringLiteral("Other^Name"))
            .uids(QStringLiteral("1.2.3"), QStringLiteral("1.2.3.4"), QStringLiteral("1.2.3.4.1"))
            .write(scene.file(QStringLiteral("there.dcm")));
        QCOMPARE(summary(scene.import()), QStringLiteral("0 0 1 0 0 0 0 0"));
        QCOMPARE(scene.index.query(QStringLiteral("SELECT group_concat(PatientID) FROM patient")).toString(),
            QStringLiteral("ID2"));
        QCOMPARE(
            scene.index.query(QStringLiteral("SELECT NumberOfPatientRelatedInstances FROM patient")).toInt(),
            1);
        QCOMPARE(summary(scene.import()), QStringLiteral("0 1 0 0 0 0 0 0"));
    }

    void keepsStrangersApart()
    {
        const Scene scene;
        const auto write = [&](const QString &id, const QString &name, const QString &study, int instance) {
            DicomFileBuilder()
                .patient(id, name)
                .uids(study, study + QStringLiteral(".1"), study + QStringLiteral(".1.%1").arg(instance))
                .write(scene.file(QStringLiteral("%1-%2-%3-%4.dcm").arg(id, name, study).arg(instance)));
        };
        write(QString(), QStringLiteral("Anonymous"), QStringLiteral("1.2.1"), 1);
        write(QString(), QStringLiteral("Anonymous"), QStringLiteral("1.2.1"), 2);
        write(QString(), QStringLiteral("Anonymous"), QStringLiteral("1.2.2"), 1);
        write(QStringLiteral("X"), QStringLiteral("Anonymous"), QStringLiteral("1.2.3"), 1);
        write(QStringLiteral("X"), QStringLiteral("Anonymous"), QStringLiteral("1.2.4"), 1);
        write(QStringLiteral("X"), QStringLiteral("Other"), QStringLiteral("1.2.4"), 2);
        QCOMPARE(summary(scene.import()), QStringLiteral("6 0 0 0 0 0 0 0"));
        QCOMPARE(scene.index.count("patient"), 4);
        QCOMPARE(scene.index.count("generalstudy"), 5);
    }

    void turnsReferencesIntoCopies()
    {
        Scene scene;
        // What a file says of itself makes no copy of it.
        DicomFileBuilder()
            .instanceNumber(1)
            .set(0x00083010, QStringLiteral("copy"))
            .write(scene.file(QStringLiteral("1.dcm")));
        scene.import();
        QVERIFY(scene.index.query(QStringLiteral("SELECT IrradiationEventUID FROM imageformat")).isNull());
        scene.request.mode = ImportMode::Copy;
        QCOMPARE(summary(scene.import()), QStringLiteral("0 0 1 0 0 0 0 0"));
        QCOMPARE(scene.stored(), QStringList{scene.filePath(1)});
        QVERIFY(QFile::exists(scene.file(QStringLiteral("1.dcm"))));
    }

    void cancelsAndGoesOnLater()
    {
        const Scene scene;
        constexpr int files = 600;
        for (int i = 1; i <= files; ++i) {
            scene.dicom(QStringLiteral("%1.dcm").arg(i), i);
        }
        Importer importer(scene.whole());
        std::thread canceller([&] {
            while (!importer.progress().finished && importer.progress().found < 100) {
                std::this_thread::yield();
            }
            importer.cancel();
        });
        const ImportReport report = importer.run();
        canceller.join();
        QVERIFY(importer.progress().finished);
        QCOMPARE(scene.index.count("imageformat"), int(report.of(FileVerdict::New)));
        if (report.end == ImportEnd::Cancelled) {
            QCOMPARE(report.notReached + report.found(), importer.progress().found);
        }
        const ImportReport rest = scene.import();
        QCOMPARE(rest.of(FileVerdict::New) + report.of(FileVerdict::New), files);
        QCOMPARE(rest.of(FileVerdict::AlreadyThere), report.of(FileVerdict::New));
    }

    // A writer that keeps its lock starves everyone else: edits must get their turn while an import runs.
    void othersWriteMeanwhile()
    {
        const Scene scene;
        const qlonglong patient = scene.index.addPatient(QStringLiteral("Edited"), QStringLiteral("E"));
        for (int i = 1; i <= 1500; ++i) {
            scene.dicom(QStringLiteral("%1.dcm").arg(i), i);
        }
        Importer importer(scene.whole());
        std::thread import([&] { importer.run(); });
        int edits = 0;
        while (!importer.progress().finished) {
            scene.index.query(
                QStringLiteral("UPDATE patient SET PatientComments = ? WHERE pk = ?"), {++edits, patient});
        }
        import.join();
        QVERIFY(edits > 1);
        QCOMPARE(
            scene.index.query(QStringLiteral("SELECT PatientComments FROM patient WHERE pk = ?"), {patient})
                .toInt(),
            edits);
        QCOMPARE(scene.index.count("imageformat"), 1500);
    }
};

PM_TEST_MAIN(TestImporter)
#include "tst_importer.moc"
