#include "deidentifier.h"
#include "deidentifyrun.h"
#include "dicomfilebuilder.h"
#include "dicomservers.h"
#include "rawdicom.h"
#include "sitekey.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

const QByteArray key(SiteKey::length, 'k');

using Change = std::function<void(DcmDataset &)>;

DcmItem *itemOf(DcmItem &item, const DcmTagKey &sequence)
{
    DcmItem *made = nullptr;
    item.findOrCreateSequenceItem(DcmTag(sequence), made);
    return made;
}

void put(DcmItem &item, Uint16 group, Uint16 element, DcmEVR vr, const QByteArray &value)
{
    item.putAndInsertString(DcmTag(group, element, vr), value.constData());
}

} // namespace

Q_DECLARE_METATYPE(Change)

class DeidentifierTest : public QObject
{
    Q_OBJECT

private slots:
    void optionsKeepWhatTheyPromise()
    {
        const QString original = m_folder.filePath(QStringLiteral("original"));
        DicomFileBuilder()
            .patient(QStringLiteral("4711-QX"), QStringLiteral("Müller^Jörg"))
            .set(0x00100030, QStringLiteral("19600229"))
            .set(0x00100040, QStringLiteral("M"))
            .set(0x00101010, QStringLiteral("044Y"))
            .set(0x00080020, QStringLiteral("20040119"))
            .set(0x00080030, QStringLiteral("072730"))
            .set(0x00081030, QStringLiteral("Knee of JORG muller, 4711-QX, left"))
            .set(0x00080070, QStringLiteral("Maker"))
            .write(original);
        const QString copy = m_folder.filePath(QStringLiteral("copy"));
        DeidentifyOptions options;
        QCOMPARE(make(original, copy, options).problem, DeidentifyProblem::None);
        QString dump = dumpOf(copy);
        for (const char *gone : {"Knee", "044Y", "19600229", "20040119", "072730", "4711", "[M]"}) {
            QVERIFY2(!dump.contains(QLatin1String(gone)), gone);
        }
        QVERIFY(dump.contains(QLatin1String("[Maker]")));
        QVERIFY(QFile::remove(copy));

        options.shiftDates = options.cleanDescriptors = options.keepCharacteristics = true;
        options.namePattern = QStringLiteral("Study^{code}");
        options.idPattern = QStringLiteral("S-1");
        QCOMPARE(make(original, copy, options).problem, DeidentifyProblem::None);
        dump = dumpOf(copy);
        const QDate moved = QDate(2004, 1, 19).addDays(-Pseudonyms(key).daysBack("id:4711-QX"));
        for (const QString &kept : {QStringLiteral("[Knee of left]"), QStringLiteral("[044Y]"),
                 QStringLiteral("[M]"), QStringLiteral("[072730]"), QStringLiteral("[S-1]"),
                 QStringLiteral("[MODIFIED]"), moved.toString(QStringLiteral("[yyyyMMdd]")),
                 QStringLiteral("[Study^%1]").arg(Pseudonyms(key).code("id:4711-QX"))}) {
            QVERIFY2(dump.contains(kept), qPrintable(kept + dump));
        }
        QVERIFY(!dump.contains(QLatin1String("19600229")));
        const QVector<AttributeChange> changes =
            Deidentifier(options, Pseudonyms(key)).preview(QFile::encodeName(original), m_cancelled).changes;
        QVERIFY(std::any_of(changes.cbegin(), changes.cend(), [](const AttributeChange &change) {
            return change.isKept && change.after == QLatin1String("Maker");
        }));
        QCOMPARE(dump.count(QLatin1String("CodeValue")), 4);
    }

    void whatIsRepeatedElsewhereGoes_data()
    {
        QTest::addColumn<Change>("change");
        QTest::addColumn<QList<QByteArray>>("gone");
        QTest::addColumn<QList<QByteArray>>("kept");
        const auto row = [](const char *name, const Change &change, const QList<QByteArray> &gone,
                             const QList<QByteArray> &kept = {}) {
            QTest::newRow(name) << change << gone << kept;
        };
        const QByteArray moved = QDate(2004, 1, 19)
                                     .addDays(-Pseudonyms(key).daysBack("id:QX47"))
                                     .toString(QStringLiteral("yyyyMMdd"))
                                     .toLatin1();
        row("in labels",
            [](DcmDataset &set) {
                put(set, 0x0070, 0x0081, EVR_LO, "Knee of doe, john");
                put(set, 0x0070, 0x0080, EVR_CS, "QX47");
                put(set, 0x0018, 0x5100, EVR_CS, "HFS");
            },
            {"doe", "QX47"}, {"Knee of", "HFS"});
        row("in numbers and times",
            [](DcmDataset &set) {
                put(set, 0x0020, 0x0012, EVR_IS, "Zoe");
                put(set, 0x0018, 0x0050, EVR_DS, "2.5\\Zoe");
                put(set, 0x0008, 0x0030, EVR_TM, "Zoe");
                put(set, 0x0010, 0x1010, EVR_AS, "Zoe");
            },
            {"Zoe"}, {"2.5\\0"});
        row("in very long texts",
            [](DcmDataset &set) {
                const QByteArray text = "Zoe " + QByteArray(2 * 1024 * 1024, 'x');
                put(set, 0x0040, 0xa160, EVR_UT, text);
                put(set, 0x0008, 0x0119, EVR_UC, text);
            },
            {"Zoe"});
        row("in what the profile does not name",
            [](DcmDataset &set) {
                put(set, 0x0010, 0x0033, EVR_LO, "1380/11/29");
                put(set, 0x0008, 0x1167, EVR_UI, "1.2.77.88.99");
                put(*itemOf(set, DcmTagKey(0x0008, 0x0051)), 0x0040, 0x0031, EVR_UT, "Springfield");
            },
            {"1380/11", "1.2.77.88.99", "Springfield"});
        row("in dates",
            [](DcmDataset &set) {
                put(set, 0x0008, 0x0021, EVR_DA, "20040119-20050101");
                put(set, 0x0008, 0x0022, EVR_DA, "20040119 Zoe");
                put(set, 0x0008, 0x002a, EVR_DT, "20040119072730+0100");
                put(set, 0x0008, 0x103e, EVR_LO, "before 2004-01-19, 29.2.60 and 3 May 2004");
            },
            {"20050101", "Zoe", "2004-01", "29.2", "May 2004"}, {moved + "072730+0100", "before"});
        row("by dates that are public",
            [](DcmDataset &set) {
                put(*itemOf(set, DCM_ProcedureCodeSequence), 0x0008, 0x0106, EVR_DT, "20040119");
                put(set, 0x0018, 0x1204, EVR_DA, "20040119");
            },
            {moved, "20040119"});
        row("in scripts that part no words, and where items have sets of their own",
            [](DcmDataset &set) {
                put(set, 0x0010, 0x0010, EVR_PN, "M\xc3\xbcller^J=\xe5\xbc\xa0^\xe4\xbc\x9f");
                put(set, 0x0008, 0x103e, EVR_LO, "\xe5\xbc\xa0\xe4\xbc\x9f\xe5\xa4\xb4 skull");
                DcmItem *outer = itemOf(set, DCM_ReferencedImageSequence);
                put(*itemOf(*outer, DCM_PurposeOfReferenceCodeSequence), 0x0008, 0x0005, EVR_CS,
                    "ISO_IR 100");
                put(*outer, 0x0070, 0x0081, EVR_LO, "M\xc3\xbcller left");
            },
            {"\xe5\xbc\xa0\xe4\xbc\x9f", "M\xc3\xbcller"}, {"skull", "left"});
        row("in attributes of makers",
            [](DcmDataset &set) {
                put(set, 0x0008, 0x0080, EVR_LO, "ACME Clinic");
                put(set, 0x0009, 0x0010, EVR_LO, "ACME 1.1");
                put(set, 0x0009, 0x1001, EVR_UI, "1.2.77.88.99");
                put(set, 0x0009, 0x1002, EVR_IS, "Zoe");
                set.putAndInsertUint8Array(DcmTag(0x0009, 0x1003, EVR_OB),
                    reinterpret_cast<const Uint8 *>("\1\2 1.2.3.1.1.1 \3"), 16);
                put(set, 0x0009, 0x1004, EVR_LO, "mode 7");
                const QVector<Uint16> words{0x4f44, 0x5e45, 0x6f4a, 0x6e68}; // DOE^John
                set.putAndInsertUint16Array(DcmTag(0x0009, 0x1005, EVR_OW), words.constData(), 4);
            },
            {"1.2.77.88.99", "Zoe", "1.2.3.1.1.1", "DOE^"}, {"ACME 1.1", "mode 7"});
    }

    void whatIsRepeatedElsewhereGoes()
    {
        QFETCH(Change, change);
        QFETCH(QList<QByteArray>, gone);
        QFETCH(QList<QByteArray>, kept);
        const QString original = m_folder.filePath(QStringLiteral("repeated"));
        DicomFileBuilder().patient(QStringLiteral("QX47"), QStringLiteral("DOE^John")).write(original);
        DcmFileFormat file;
        QVERIFY(file.loadFile(QFile::encodeName(original).constData()).good());
        change(*file.getDataset());
        QVERIFY(file.saveFile(QFile::encodeName(original).constData(), EXS_LittleEndianExplicit).good());
        DeidentifyOptions options;
        options.shiftDates = options.cleanDescriptors = options.keepCharacteristics = true;
        options.removePrivate = false;
        const QString copy = original + QLatin1String(QTest::currentDataTag()).mid(0, 12);
        QCOMPARE(make(original, copy, options).problem, DeidentifyProblem::None);
        const QByteArray bytes = bytesOf(copy);
        for (const QByteArray &text : gone) {
            QVERIFY2(!bytes.toLower().contains(text.toLower()), text.constData());
        }
        for (const QByteArray &text : kept) {
            QVERIFY2(bytes.contains(text), text.constData());
        }
    }

    void pixelsCarryNothingElse()
    {
        const QString original = m_folder.filePath(QStringLiteral("pixels"));
        DicomFileBuilder().write(original);
        DcmFileFormat file;
        QVERIFY(file.loadFile(QFile::encodeName(original).constData()).good());
        DcmDataset &set = *file.getDataset();
        set.putAndInsertUint16(DcmTag(0x6000, 0x0102, EVR_US), 15); // a drawing in bits that no sample uses
        const Uint16 samples[] = {
            0x8123, 0x8456, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x8789, 0x5a5a, 0x5a5a};
        set.putAndInsertUint16Array(DCM_PixelData, samples, 18);
        put(set, 0x7fe0, 0x0005, EVR_LO, "Smith");
        QVERIFY(file.saveFile(QFile::encodeName(original).constData(), EXS_LittleEndianExplicit).good());
        QCOMPARE(make(original, original + QLatin1Char('n')).burnedIn, BurnedIn::No);
        const QByteArray native = bytesOf(original + QLatin1Char('n'));
        QVERIFY(!native.contains("Smith"));
        QCOMPARE(native.right(36).left(4), QByteArray("\x23\x01\x56\x04"));
        QCOMPARE(native.right(6), QByteArray("\x89\x07\0\0\0\0", 6));

        const QByteArray jpeg("\xff\xd8\xff\xe1\0\x08"
                              "Exif^J\xff\xfe\0\x07Smith\xff\xda\0\x02\x01\xff\0\x02\xff\xd9",
            32);
        RawDicom packed("1.2.840.10008.1.2.4.50");
        packed.explicitElement(0x00080016, "UI", UID_CTImageStorage)
            .explicitElement(0x00080018, "UI", "1.2.3.4.5")
            .identification()
            .raw(RawDicom::tagBytes(0x7fe00010) + "OB" + RawDicom::number(0, 2)
                + RawDicom::number(0xffffffff, 4) + RawDicom::tagBytes(0xfffee000) + RawDicom::number(0, 4)
                + RawDicom::tagBytes(0xfffee000) + RawDicom::number(quint32(jpeg.size()), 4) + jpeg
                + RawDicom::tagBytes(0xfffee0dd) + RawDicom::number(0, 4));
        writeFile(original, packed.bytes());
        QCOMPARE(make(original, original + QLatin1Char('p')).burnedIn, BurnedIn::No);
        const QByteArray copy = bytesOf(original + QLatin1Char('p'));
        QVERIFY(!copy.contains("Exif") && !copy.contains("Smith"));
        QCOMPARE(copy.right(18).left(10), jpeg.right(10));
    }

    void patientsOfOneNumberStayApart()
    {
        DeidentifyRequest request;
        for (const char *name : {"Doe^John", "DOE^JOHN^", "Roe^Richard"}) {
            const QString path = m_folder.filePath(QStringLiteral("number%1").arg(request.files.size()));
            DicomFileBuilder()
                .patient(QStringLiteral("1234"), QLatin1String(name))
                .uids(QStringLiteral("1.2"), QStringLiteral("1.3"),
                    QStringLiteral("1.4.%1").arg(request.files.size()))
                .write(path);
            request.files.append(path);
        }
        request.folder = m_folder.path();
        request.name = QStringLiteral("apart");
        request.siteKey = key;
        DeidentifyRun run(request);
        QCOMPARE(run.run().sharedNumbers, 1);
        const DeidentifyReport report = run.deliver(true);
        QCOMPARE(report.names.size(), 2);
        QCOMPARE(report.files.size(), 3);
    }

    void aFullDiskIsNoticed()
    {
        const QString original = m_folder.filePath(QStringLiteral("small"));
        DicomFileBuilder().write(original);
        rlimit whole = {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &whole), 0);
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit few{600, whole.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &few), 0);
        const DeidentifiedFile made = make(original, original + QLatin1Char('c'));
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &whole), 0);
        QCOMPARE(made.problem, DeidentifyProblem::DiskFull);
        QVERIFY(!QFile::exists(original + QLatin1Char('c')));
    }

    void theSameKeyGivesTheSameUids()
    {
        const QString original = m_folder.filePath(QStringLiteral("twice"));
        DicomFileBuilder()
            .uids(QStringLiteral("1.2.3"), QStringLiteral("1.2.4"), QStringLiteral("1.2.5"))
            .write(original);
        const DeidentifiedFile once = make(original, original + QLatin1Char('1'));
        const DeidentifiedFile again = make(original, original + QLatin1Char('2'));
        QCOMPARE(once.studyUid, again.studyUid);
        QCOMPARE(bytesOf(original + QLatin1Char('1')), bytesOf(original + QLatin1Char('2')));
        QVERIFY(once.sopInstance != once.seriesUid);
        QVERIFY(Pseudonyms(QByteArray(SiteKey::length, 'x')).uid("1.2.3") != once.studyUid);
        QVERIFY(QRegularExpression(QStringLiteral("^2\\.25\\.(0|[1-9]\\d{0,38})$"))
                    .match(QString::fromLatin1(once.studyUid))
                    .hasMatch());
    }

    void whatIsNotUnderstoodIsRefused()
    {
        const QString original = m_folder.filePath(QStringLiteral("odd"));
        const QString copy = m_folder.filePath(QStringLiteral("oddcopy"));
        DicomFileBuilder().write(original);
        const QByteArray whole = bytesOf(original);
        const QByteArray tail = whole.right(16);
        writeFile(original,
            whole + RawDicom::tagBytes(0xfffcfffc) + "OB" + RawDicom::number(0, 2) + RawDicom::number(8, 4)
                + "Smith^Jo");
        QCOMPARE(make(original, copy).problem, DeidentifyProblem::None);
        QVERIFY(bytesOf(copy).endsWith(tail));

        QVERIFY(QFile::remove(copy));
        writeFile(original, whole.chopped(4));
        QCOMPARE(make(original, copy).problem, DeidentifyProblem::Damaged);
        writeFile(original, "no such thing");
        QVERIFY(make(original, copy).problem != DeidentifyProblem::None);
        // Nested beyond what any stack bears.
        QByteArray deep =
            whole.left(whole.indexOf(RawDicom::tagBytes(0x7fe00010))) + RawDicom::tagBytes(0x00400275);
        for (int i = 0; i < 200 * 1000; ++i) {
            deep += "SQ" + RawDicom::number(0, 2) + RawDicom::number(0xffffffff, 4)
                + RawDicom::tagBytes(0xfffee000) + RawDicom::number(0xffffffff, 4)
                + RawDicom::tagBytes(0x00400275);
        }
        writeFile(original, deep);
        QVERIFY(make(original, copy).problem != DeidentifyProblem::None);
        QVERIFY(!QFile::exists(copy));
    }

    void keyIsForItsOwnerAlone()
    {
        const QString path = m_folder.filePath(QStringLiteral("keys/site"));
        const SiteKey::Result made = SiteKey::load(path);
        QCOMPARE(made.key.size(), SiteKey::length);
        QCOMPARE(SiteKey::load(path).key, made.key);
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(path).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0600U);
        QCOMPARE(filesBelow(m_folder.filePath(QStringLiteral("keys"))).size(), 1);

        QCOMPARE(::chmod(QFile::encodeName(path).constData(), 0640), 0);
        QCOMPARE(SiteKey::load(path).problem, SiteKey::Problem::NotPrivate);
        writeFile(path, "short");
        QCOMPARE(SiteKey::load(path).problem, SiteKey::Problem::NotAKey);
    }

private:
    DeidentifiedFile make(const QString &original, const QString &copy, const DeidentifyOptions &options = {})
    {
        return Deidentifier(options, Pseudonyms(key))
            .run(QFile::encodeName(original), QFile::encodeName(copy), m_cancelled);
    }

    QString dumpOf(const QString &path)
    {
        return QString::fromLatin1(runTool(QStringLiteral("dcmdump"), {QStringLiteral("+L"), path}).output);
    }

    QTemporaryDir m_folder;
    std::atomic<bool> m_cancelled{false};
};

PM_TEST_MAIN(DeidentifierTest)
#include "tst_deidentifier.moc"
