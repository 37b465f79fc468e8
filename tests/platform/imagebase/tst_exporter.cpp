#include "dicomfilebuilder.h"
#include "exporter.h"
#include "exportstage.h"
#include "exportwriter.h"
#include "keyfolders.h"
#include "safename.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QSqlQuery>
#include <QtTest>

#include <optional>
#include <thread>

namespace {

QStringList namesBelow(const QString &folder)
{
    return filesBelow(folder).replaceInStrings(
        QRegularExpression(u'^' + QRegularExpression::escape(folder + u'/')), QString());
}

/// What a program prints; a failure of the test where it fails.
QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool good = process.waitForFinished() && process.exitCode() == 0;
    const QByteArray output = process.readAllStandardOutput();
    return good ? output : "FAILED " + output + process.readAllStandardError();
}

} // namespace

/// Exports out of an index with real files, in every form that there is.
class ExporterTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index.emplace();
        m_folder.emplace();
        m_request = {};
        m_request.databasePath = m_index->path();
    }

    void cleanup()
    {
        m_folder.reset();
        m_index.reset();
    }

    void namesAreSafe_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        const auto row = [](const char *tag, const QString &text, const QString &name) {
            QTest::newRow(tag) << text << name;
        };
        row("scripts", QStringLiteral("山田, Tarō (Ж)"), QStringLiteral("山田, Tarō (Ж)"));
        row("ways out", QStringLiteral("../../etc/passwd"), QStringLiteral("_.._etc_passwd"));
        row("absolute", QStringLiteral("/root"), QStringLiteral("_root"));
        row("signs", QStringLiteral("a<b>c:d\"e|f?g*h\\i"), QStringLiteral("a_b_c_d_e_f_g_h_i"));
        row("a zero byte", QString::fromUtf8("a\0b", 3), QStringLiteral("a_b"));
        row("turned around", QStringLiteral("a\u202Egnp.exe"), QStringLiteral("agnp.exe"));
        row("a device", QStringLiteral("con.txt"), QStringLiteral("_con.txt"));
        row("edges", QStringLiteral(" . x . "), QStringLiteral("x"));
        row("nothing", QStringLiteral("..."), QStringLiteral("none"));
        row("long", QString(300, QLatin1Char('x')), QString(40, QLatin1Char('x')));
        row("half a character", QString(39, QLatin1Char('x')) + QStringLiteral("\U0001F600"),
            QString(39, QLatin1Char('x')));
    }

    void namesAreSafe()
    {
        QFETCH(QString, text);
        QTEST(safeName(text, QStringLiteral("none"), 40), "name");
    }

    void readableFoldersNeverMeet()
    {
        add(1, QStringLiteral("Doe^John"), QStringLiteral("1"), QStringLiteral("../../up"));
        add(2, QStringLiteral("Doe^John"), QStringLiteral("1"), QStringLiteral("../../up"));
        add(1, QStringLiteral("DOE^JOHN"), QStringLiteral("2"), QStringLiteral("x"));
        import();
        m_index->query(QStringLiteral("UPDATE patient SET PatientID = 'same'"));
        const QString target = makeTarget(QStringLiteral("out/inner"));
        for (int times = 1; times <= 2; ++times) {
            const ExportReport report = run(ExportFormat::NamedFolders, target);
            QCOMPARE(report.end, ExportEnd::Complete);
            QCOMPARE(report.files, qint64(3));
            QVERIFY(report.failures.isEmpty());
            QCOMPARE(namesBelow(path(QStringLiteral("out"))).size(), 3 * times);
        }
        const QStringList files = namesBelow(target);
        QCOMPARE(
            namesBelow(m_folder->path()).filter(QStringLiteral("out/")).size(), 6); // nothing outside of it
        // What is taken is numbered, by case, too.
        const QString up = QStringLiteral("/2024-01-31 CT .._.._up/001 CT/0000");
        const QString other = QStringLiteral("/2024-01-31 CT x/001 CT/00001.dcm");
        QCOMPARE(files,
            QStringList({"DOE, JOHN (same) (2)" + other, "DOE, JOHN (same) (4)" + other,
                "Doe, John (same) (3)" + up + "1.dcm", "Doe, John (same) (3)" + up + "2.dcm",
                "Doe, John (same)" + up + "1.dcm", "Doe, John (same)" + up + "2.dcm"}));
        const QString second = files.filter(QStringLiteral("00002.dcm")).constFirst();
        QCOMPARE(bytesOf(target + u'/' + second), bytesOf(path(QStringLiteral("source/1-2.dcm"))));
    }

    void keyFoldersAreUsedAgain()
    {
        add(1, QStringLiteral("Doe^John"), QStringLiteral("1"), QString());
        import();
        const qlonglong series = m_index->query(QStringLiteral("SELECT pk FROM generalseries")).toLongLong();
        m_request.level = RecordLevel::Series;
        m_request.keys = {series};
        const QString target = makeTarget(QStringLiteral("out"));
        for (int times = 0; times < 3; ++times) {
            QCOMPARE(run(ExportFormat::KeyFolders, target).files, qint64(1));
        }
        QCOMPARE(namesBelow(target),
            QStringList({QStringLiteral("St0/Se%1/1-1.dcm").arg(series),
                QStringLiteral("St_0/Se%1/1-1.dcm").arg(series)}));
    }

    void anArchiveIsReadByOthers()
    {
        add(1, QStringLiteral("山田^太郎"), QStringLiteral("1"), QStringLiteral("Zürich"));
        add(2, QStringLiteral("山田^太郎"), QStringLiteral("1"), QStringLiteral("Zürich"));
        import();
        for (const bool compress : {true, false}) {
            m_request.compress = compress;
            const ExportReport report = run(ExportFormat::Zip, path(QStringLiteral("images.zip")));
            QCOMPARE(report.end, ExportEnd::Complete);
            QCOMPARE(report.files, qint64(2));
            const QByteArray said = outputOf(QStringLiteral("python3"),
                {QStringLiteral("-c"),
                    QStringLiteral("import sys, zipfile\n"
                                   "z = zipfile.ZipFile(sys.argv[1])\n"
                                   "assert z.testzip() is None\n"
                                   "names = z.namelist()\n"
                                   "assert z.read(names[1]) == open(sys.argv[2], 'rb').read()\n"
                                   "sys.stdout.buffer.write('\\n'.join(names).encode())\n"),
                    path(QStringLiteral("images.zip")), path(QStringLiteral("source/1-2.dcm"))});
            const QStringList names = QString::fromUtf8(said).split(u'\n');
            QCOMPARE(names.size(), 2);
            QVERIFY2(names[0].contains(QStringLiteral("山田")) && names[0].contains(QStringLiteral("Zürich")),
                said.constData());
        }
        QVERIFY(namesBelow(m_folder->path()).filter(QStringLiteral(".export")).isEmpty());
    }

    /// A file that ends before its announced size spoils the archive that it was written to: of that nothing
    /// may reach the next one. Files of the kernel are such files.
    void aSpoiltArchiveLeavesNothing()
    {
        const QString shorter = QStringLiteral("/sys/kernel/mm/transparent_hugepage/enabled");
        if (!QFileInfo::exists(shorter)) {
            QSKIP("no file that is shorter than it says");
        }
        for (int number = 1; number <= 2; ++number) {
            add(number, QStringLiteral("Doe^John"), QStringLiteral("1"), QString());
        }
        m_request.check = true;
        m_request.items = {{path(QStringLiteral("source/1-1.dcm")), QStringLiteral("a.dcm"), 1},
            {shorter, QStringLiteral("b.dcm"), 1},
            {path(QStringLiteral("source/1-2.dcm")), QStringLiteral("c.dcm"), 1}};
        const QString target = path(QStringLiteral("a.zip"));
        const ExportReport report = run(ExportFormat::Zip, target);
        QCOMPARE(report.end, ExportEnd::Complete);
        QCOMPARE(report.failures.size(), 1);
        QCOMPARE(report.failures[0].problem, ExportProblem::SourceChanged);
        const QByteArray said = outputOf(QStringLiteral("python3"),
            {QStringLiteral("-c"),
                QStringLiteral("import sys, zipfile\n"
                               "z = zipfile.ZipFile(sys.argv[1])\n"
                               "print(z.testzip(), z.namelist())\n"),
                target});
        QCOMPARE(said.trimmed(), QByteArray("None ['a.dcm', 'c.dcm']"));
        // The end of the central directory comes once, and at the end.
        QCOMPARE(bytesOf(target).count("PK\x05\x06"), 1);
    }

    /// What is there without the directory would be taken for a file set of somebody else.
    void aFileSetComesWholeOrNotAtAll()
    {
        add(1, QStringLiteral("Doe^John"), QStringLiteral("1"), QString());
        import();
        const QString target = makeTarget(QStringLiteral("disc"));
        {
            const ExportStage stage(target);
            QVERIFY(QDir().mkpath(stage.path(QStringLiteral("DICOM"))));
            // The directory is missing.
            QVERIFY(stage.moveAllOut({QStringLiteral("DICOM"), QStringLiteral("DICOMDIR")}, false) != 0);
            QVERIFY(!QFileInfo::exists(target + QStringLiteral("/DICOM")));
        }
        // As a kill between the two leaves them.
        const QString dead = target + QStringLiteral("/.export-abcdef/");
        QVERIFY(QDir().mkpath(target + QStringLiteral("/DICOM/old")));
        for (const auto &[name, text] : {std::make_pair(".lock", "99999999\nx\n\n"),
                 std::make_pair(".out", "DICOM\nDICOMDIR"), std::make_pair("DICOMDIR", "x")}) {
            writeFile(dead + QLatin1String(name), text);
        }
        QCOMPARE(run(ExportFormat::Media, target).end, ExportEnd::Complete);
        QCOMPARE(namesBelow(target),
            QStringList(
                {QStringLiteral("DICOM/PA000001/ST000001/SE000001/IM000001"), QStringLiteral("DICOMDIR")}));
    }

    void aFileSetIsReadByOthers()
    {
        for (int number = 1; number <= 3; ++number) {
            add(number, QStringLiteral("Doe^John"), QStringLiteral("1"), QStringLiteral("Head"));
        }
        add(1, QStringLiteral("Müller^Änne"), QStringLiteral("2"), QString());
        import();
        // No file of a file set: the preamble that tells DICOM is missing. It goes along, and is named.
        const QString raw = path(QStringLiteral("source/1-3.dcm"));
        writeFile(raw, bytesOf(raw).mid(132));
        const QString target = makeTarget(QStringLiteral("disc"));
        const ExportReport report = run(ExportFormat::Media, target);
        QCOMPARE(report.end, ExportEnd::Complete);
        QCOMPARE(report.failures.size(), 1);
        QCOMPARE(report.failures[0].problem, ExportProblem::NotInDirectory);
        QVERIFY(report.retryItems().isEmpty());
        QCOMPARE(namesBelow(target),
            QStringList({QStringLiteral("DICOM/PA000001/ST000001/SE000001/IM000001"),
                QStringLiteral("DICOM/PA000001/ST000001/SE000001/IM000002"),
                QStringLiteral("DICOM/PA000001/ST000001/SE000001/IM000003"),
                QStringLiteral("DICOM/PA000002/ST000001/SE000001/IM000001"), QStringLiteral("DICOMDIR")}));
        const QByteArray dump = outputOf(QStringLiteral("dcmdump"),
            {QStringLiteral("+P"), QStringLiteral("0004,1500"), target + "/DICOMDIR"});
        QCOMPARE(dump.count("IM00000"), 3);
        // The system's own: Debian's modules are its.
        const QByteArray read = outputOf(QStringLiteral("/usr/bin/python3"),
            {QStringLiteral("-c"),
                QStringLiteral("import sys, pydicom\n"
                               "from pydicom.fileset import FileSet\n"
                               "s = FileSet(sys.argv[1])\n"
                               "print(len(s), len(s.find_values('PatientID')), "
                               "all(i.load().SOPInstanceUID == i.SOPInstanceUID for i in s))\n"),
                target + "/DICOMDIR"});
        QCOMPARE(read.trimmed(), QByteArray("3 2 True"));
        QCOMPARE(run(ExportFormat::Media, target).end, ExportEnd::TargetTaken);
        QCOMPARE(namesBelow(target).size(), 5);
    }

    void whatFailsIsToldAndCanBeRepeated()
    {
        for (int number = 1; number <= 3; ++number) {
            add(number, QStringLiteral("Doe^John"), QStringLiteral("1"), QString());
        }
        import();
        const QString lost = path(QStringLiteral("source/1-2.dcm"));
        QVERIFY(QFile::rename(lost, lost + QStringLiteral(".away")));
        const QString target = makeTarget(QStringLiteral("out"));
        const ExportReport report = run(ExportFormat::NamedFolders, target);
        QCOMPARE(report.end, ExportEnd::Complete);
        QCOMPARE(report.files, qint64(2));
        QCOMPARE(report.failures.size(), 1);
        QCOMPARE(report.failures[0].problem, ExportProblem::SourceMissing);
        QCOMPARE(report.failures[0].item.source, lost);

        QVERIFY(QFile::rename(lost + QStringLiteral(".away"), lost));
        m_request.items = report.retryItems();
        QCOMPARE(run(ExportFormat::NamedFolders, target).files, qint64(1));
        QCOMPARE(namesBelow(target).size(), 3);
        QCOMPARE(namesBelow(target).filter(QStringLiteral("(2)")).size(), 0);

        // Paths that an index must not have.
        m_request.items.clear();
        m_index->query(QStringLiteral("UPDATE imageformat SET FilePath = 'relative.dcm'"));
        m_index->query(QStringLiteral("UPDATE imageformat SET FilePath = '/a' || char(0) || 'b' WHERE pk = "
                                      "(SELECT min(pk) FROM imageformat)"));
        QCOMPARE(run(ExportFormat::KeyFolders, target).failures.size(), 3);
        QCOMPARE(namesBelow(target).size(), 3);
    }

    void whatIsBeginsWholeOrNotAtAll()
    {
        constexpr int images = 1500;
        for (int number = 1; number <= images; ++number) {
            add(number, QStringLiteral("Doe^John"), QStringLiteral("1"), QString());
        }
        import();
        const QString target = makeTarget(QStringLiteral("out"));
        for (const ExportFormat format :
            {ExportFormat::NamedFolders, ExportFormat::Zip, ExportFormat::Media}) {
            m_request.format = format;
            m_request.target = format == ExportFormat::Zip ? target + QStringLiteral("/a.zip") : target;
            Exporter exporter(m_request);
            ExportReport report;
            std::thread thread([&] { report = exporter.run(); });
            while (
                exporter.progress().phase != ExportProgress::Phase::Done && exporter.progress().files < 2) {
                std::this_thread::yield();
            }
            exporter.cancel();
            thread.join();
            QCOMPARE(report.end, ExportEnd::Cancelled);
            QVERIFY(QDir(target).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
        }
        m_request.format = ExportFormat::NamedFolders;
        m_request.target = target;
        m_request.items = {{path(QStringLiteral("source/1-1.dcm")), QStringLiteral("x"), qint64(1) << 60}};
        const ExportReport full = Exporter(m_request).run();
        QCOMPARE(full.end, ExportEnd::DiskFull);
        QVERIFY(full.needed > full.available && full.available > 0);
        QVERIFY(QDir(target).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    }

    void aFlippedByteIsFound_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("folder") << int(ExportFormat::NamedFolders);
        QTest::newRow("archive") << int(ExportFormat::Zip);
    }

    void aFlippedByteIsFound()
    {
        QFETCH(int, format);
        add(1, QStringLiteral("Doe^John"), QStringLiteral("1"), QString());
        const std::atomic<bool> never{false};
        m_request.format = ExportFormat(format);
        m_request.target = path(QStringLiteral("a.zip"));
        const ExportItem item{path(QStringLiteral("source/1-1.dcm")), QStringLiteral("a.dcm"), 0};
        const ExportStage stage(m_folder->path());
        QCOMPARE(stage.error(), 0);
        for (const bool flip : {false, true}) {
            const std::unique_ptr<ExportWriter> writer = ExportWriter::make(m_request, stage, never);
            QVERIFY(!writer->write(item).problem && !writer->finish());
            if (flip) {
                QFile made(stage.path(
                    ExportFormat(format) == ExportFormat::Zip ? QStringLiteral("a.zip") : item.name));
                QVERIFY(made.open(QIODevice::ReadWrite) && made.seek(made.size() / 2));
                const char byte = *made.read(1).constData();
                QVERIFY(made.seek(made.size() / 2) && made.putChar(char(byte ^ 1)));
            }
            QCOMPARE(writer->check(item).problem.has_value(), flip);
        }
    }

private:
    /// One image of one series of one study.
    void add(int number, const QString &name, const QString &study, const QString &description)
    {
        constexpr quint32 studyDescription = 0x00081030;
        const QString uid = QStringLiteral("2.25.7.%1").arg(study);
        DicomFileBuilder builder;
        builder.patient(QStringLiteral("ID%1").arg(study), name)
            .set(studyDescription, description)
            .uids(uid, uid + QStringLiteral(".1"), uid + QStringLiteral(".1.%1").arg(number))
            .instanceNumber(number)
            .write(path(QStringLiteral("source/%1-%2.dcm").arg(study).arg(number)));
    }

    void import()
    {
        QCOMPARE(m_index->import({path(QStringLiteral("source"))}).end, ImportEnd::Complete);
        QSqlQuery patients(QStringLiteral("SELECT pk FROM patient ORDER BY pk"), m_index->database());
        while (patients.next()) {
            m_request.keys.append(patients.value(0).toLongLong());
        }
    }

    ExportReport run(ExportFormat format, const QString &target)
    {
        m_request.format = format;
        m_request.target = target;
        return Exporter(m_request).run();
    }

    QString path(const QString &name) const { return m_folder->filePath(name); }

    QString makeTarget(const QString &name) const
    {
        QDir(m_folder->path()).mkpath(name);
        return path(name);
    }

    std::optional<TemporaryIndex> m_index;
    std::optional<QTemporaryDir> m_folder;
    ExportRequest m_request;
};

PM_TEST_MAIN(ExporterTest)
#include "tst_exporter.moc"
