#include "dicomfilebuilder.h"
#include "temporaryindex.h"
#include "testmain.h"

#include <QSqlQuery>
#include <QtTest>

#include <optional>

/// ZIP archives among what is imported: made by another program, good, bad and hostile.
class ArchiveImportTest : public QObject
{
    Q_OBJECT

private slots:
    /// Five files to be packed.
    void init()
    {
        m_index.emplace();
        m_folder.emplace();
        DicomFileBuilder builder;
        for (int i = 1; i <= 5; ++i) {
            builder
                .uids(QStringLiteral("2.25.1"), QStringLiteral("2.25.1.1"),
                    QStringLiteral("2.25.1.1.%1").arg(i))
                .write(path(QStringLiteral("source/%1.dcm").arg(i)));
        }
    }

    void cleanup()
    {
        // Nothing unpacked stays behind, whatever became of it.
        QVERIFY(!QFileInfo::exists(m_index->folder() + QStringLiteral("/store/.incoming")));
        m_folder.reset();
        m_index.reset();
    }

    void membersGoIntoTheStore()
    {
        python(QStringLiteral("import os\nos.mkdir('in')\n"
                              "inner = io.BytesIO()\n"
                              "with zipfile.ZipFile(inner, 'w') as z: z.write('source/4.dcm', 'four')\n"
                              "with zipfile.ZipFile('in/A.ZIP', 'w', zipfile.ZIP_DEFLATED) as z:\n"
                              "    z.write('source/1.dcm', 'folder/one.dcm')\n"
                              "    z.write('source/2.dcm', '../../../two.dcm')\n"
                              "    z.write('source/3.dcm', '/three.dcm')\n"
                              "    z.writestr('inner.zip', inner.getvalue())\n"
                              "    z.writestr('notes.txt', 'no image')\n"
                              "os.rename('source/5.dcm', 'in/5.dcm')\n"));
        const ImportReport report = import(QStringLiteral("in"));
        QCOMPARE(report.end, ImportEnd::Complete);
        QCOMPARE(report.of(FileVerdict::New), qint64(5));
        QCOMPARE(report.found(), qint64(6));
        QCOMPARE(reasonsOf(report).value(QStringLiteral("A.ZIP › notes.txt")), FileReason::NotDicom);
        QCOMPARE(m_index->query(QStringLiteral("SELECT count(*) FROM imageformat WHERE "
                                               "IrradiationEventUID = 'copy' AND FilePath GLOB ?"),
                     {m_index->folder() + QStringLiteral("/store/*")}),
            QVariant(4));
        QSqlQuery files(QStringLiteral("SELECT FilePath FROM imageformat"), m_index->database());
        while (files.next()) {
            QVERIFY(QFileInfo(files.value(0).toString()).size() > 0);
        }
        QVERIFY(!QFileInfo::exists(path(QStringLiteral("two.dcm"))));
        // The same again, in either mode.
        for (const ImportMode mode : {ImportMode::Reference, ImportMode::Copy}) {
            const ImportReport again = import(QStringLiteral("in/A.ZIP"), mode);
            QCOMPARE(again.of(FileVerdict::AlreadyThere), qint64(4));
        }
        QCOMPARE(images(), 5);
    }

    void badMembersAreNamed()
    {
        python(QStringLiteral("import os\nos.mkdir('in')\n"
                              "def pack(name, *members):\n"
                              "    with zipfile.ZipFile(name, 'w') as z:\n"
                              "        for m in members: z.write(m, os.path.basename(m))\n"
                              "    return bytearray(open(name, 'rb').read())\n"
                              "def save(name, data): open(name, 'wb').write(data)\n"
                              "good = pack('in/a.zip', 'source/1.dcm', 'source/2.dcm')\n"
                              "bad = bytearray(good)\n"
                              "bad[bad.find(b'DICM') + 200] ^= 1\n" // its check sum no longer holds
                              "save('in/flipped.zip', bad)\n"
                              "locked = bytearray(pack('x', 'source/3.dcm', 'source/1.dcm'))\n"
                              "for mark, flags in ((b'PK\\3\\4', 6), (b'PK\\1\\2', 8)):\n"
                              "    at = locked.find(mark)\n"
                              "    while at >= 0:\n"
                              "        locked[at + flags] |= 1\n"
                              "        at = locked.find(mark, at + 1)\n"
                              "save('in/locked.zip', locked)\n"
                              "cut = pack('x', 'source/4.dcm', 'source/5.dcm')\n"
                              "save('in/cut.zip', cut[:len(cut) * 3 // 4])\n"
                              "save('in/noise.zip', b'PK' + os.urandom(5000))\n"
                              "os.remove('in/a.zip')\n"));
        const ImportReport report = import(QStringLiteral("in"));
        QCOMPARE(report.end, ImportEnd::Complete);
        const QMap<QString, FileReason> reasons = reasonsOf(report);
        QCOMPARE(reasons.value(QStringLiteral("flipped.zip › 1.dcm")), FileReason::ArchiveDamaged);
        QCOMPARE(reasons.value(QStringLiteral("locked.zip")), FileReason::ArchiveEncrypted);
        QCOMPARE(reasons.value(QStringLiteral("cut.zip › 5.dcm")), FileReason::ArchiveDamaged);
        const auto isLocked = [](const ImportIssue &issue) { return issue.files == 2; };
        QCOMPARE(
            std::count_if(report.issues().begin(), report.issues().end(), isLocked), 1); // one line for both
        QVERIFY(reasons.contains(QStringLiteral("noise.zip")));
        QCOMPARE(images(), 2); // 2.dcm and 4.dcm
        QVERIFY(report.retryPaths().contains(path(QStringLiteral("in/cut.zip"))));
    }

    void hostileArchivesAreBounded()
    {
        python(QStringLiteral("import os\nos.mkdir('in')\n"
                              "def pack(name, data):\n"
                              "    out = io.BytesIO()\n"
                              "    with zipfile.ZipFile(out, 'w') as z: z.writestr(name, data)\n"
                              "    return out.getvalue()\n"
                              "image = open('source/1.dcm', 'rb').read()\n"
                              "deep = pack('b.zip', pack('c.zip', pack('d.dcm', image)))\n"
                              "open('in/deep.zip', 'wb').write(deep)\n"
                              "with zipfile.ZipFile('in/bomb.zip', 'w', zipfile.ZIP_DEFLATED) as z:\n"
                              "    with z.open('zeros.dcm', 'w', force_zip64=True) as m:\n"
                              "        for i in range(300): m.write(bytes(1 << 20))\n"
                              "    z.write('source/2.dcm', 'after.dcm')\n"));
        const ImportReport report = import(QStringLiteral("in"));
        QCOMPARE(report.end, ImportEnd::Complete);
        const QMap<QString, FileReason> reasons = reasonsOf(report);
        QCOMPARE(reasons.value(QStringLiteral("deep.zip › b.zip › c.zip")), FileReason::ArchiveNested);
        QCOMPARE(reasons.value(QStringLiteral("bomb.zip › zeros.dcm")), FileReason::ArchiveTooLarge);
        QCOMPARE(images(), 0);
    }

private:
    /// Runs in the folder with everything that makes archives at hand.
    void python(const QString &script) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(QStringLiteral("python3"),
            {QStringLiteral("-c"), QStringLiteral("import zipfile, io\n") + script});
        QVERIFY(process.waitForFinished(-1));
        QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    }

    ImportReport import(const QString &name, ImportMode mode = ImportMode::Reference) const
    {
        return m_index->import({path(name)}, mode);
    }

    static QMap<QString, FileReason> reasonsOf(const ImportReport &report)
    {
        QMap<QString, FileReason> reasons;
        for (const ImportIssue &issue : report.issues()) {
            reasons.insert(issue.path.section(QStringLiteral("in/"), 1), issue.reason);
        }
        return reasons;
    }

    int images() const { return m_index->count("imageformat"); }
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::optional<TemporaryIndex> m_index;
    std::optional<QTemporaryDir> m_folder;
};

PM_TEST_MAIN(ArchiveImportTest)
#include "tst_archiveimport.moc"
