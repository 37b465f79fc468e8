#include "datatruth.h"
#include "dicomreader.h"
#include "rawdicom.h"
#include "testfiles.h"
#include "testmain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <ctime>

#include <sys/stat.h>

using Outcome = DicomReadResult::Outcome;
Q_DECLARE_METATYPE(Outcome)
Q_DECLARE_METATYPE(Attribute)

namespace {

Outcome outcomeFor(const QString &verdict)
{
    static const QMap<QString, Outcome> outcomes{{QStringLiteral("index"), Outcome::Image},
        {QStringLiteral("damaged"), Outcome::Image}, {QStringLiteral("dicomdir"), Outcome::MediaDirectory},
        {QStringLiteral("not-dicom"), Outcome::NotDicom}, {QStringLiteral("unreadable"), Outcome::Unreadable},
        {QStringLiteral("no-patient-study"), Outcome::NoPatientOrStudy},
        {QStringLiteral("missing-uid"), Outcome::MissingUid},
        {QStringLiteral("bad-uid"), Outcome::MalformedUid}};
    return outcomes.value(verdict, Outcome::CannotOpen);
}

/// Of processor time: the machine may be busy with other things.
double secondsSince(std::clock_t start)
{
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Abbreviated values and those with escaped control characters cannot be compared.
bool isComparable(const QString &value)
{
    return !value.contains(QStringLiteral("…[")) && !value.contains(QLatin1Char('\\'));
}

QString withoutEmptyEnd(QString name)
{
    while (name.endsWith(QLatin1Char('^')) || name.endsWith(QLatin1Char(' '))) {
        name.chop(1);
    }
    return name;
}

} // namespace

class DicomReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void corpusVerdicts()
    {
        const QVector<DataTruth> truths = readDataTruth();
        if (truths.isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        QStringList wrong;
        for (const DataTruth &truth : truths) {
            // A few lines of the truth are cut off by control characters in them; their files are unreadable
            // ones.
            const QString verdict = truth.verdict.isEmpty() ? QStringLiteral("unreadable") : truth.verdict;
            const std::clock_t start = std::clock();
            const auto result =
                m_reader.read(QFile::encodeName(sharedData() + QLatin1Char('/') + truth.path));
            if (result.outcome != outcomeFor(verdict) || secondsSince(start) > 3) {
                wrong.append(QStringLiteral("%1 is %2, read as %3 in %4 s (%5)")
                                 .arg(truth.path, verdict)
                                 .arg(int(result.outcome))
                                 .arg(secondsSince(start))
                                 .arg(result.detail));
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
    }

    void corpusValues()
    {
        const QVector<DataTruth> truths = readDataTruth();
        if (truths.isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        QStringList wrong;
        for (const DataTruth &truth : truths) {
            if (outcomeFor(truth.verdict) != Outcome::Image) {
                continue;
            }
            const auto result =
                m_reader.read(QFile::encodeName(sharedData() + QLatin1Char('/') + truth.path));
            for (auto it = truth.values.cbegin(); it != truth.values.cend(); ++it) {
                const QString expected =
                    it.key() == Attribute::PatientName ? withoutEmptyEnd(*it) : it->trimmed();
                if (isComparable(*it) && result.header[it.key()] != expected) {
                    wrong.append(QStringLiteral("%1: '%2' instead of '%3'")
                                     .arg(truth.path, result.header[it.key()], expected));
                }
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
    }

    void outcomes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Outcome>("expected");
        const QByteArray text = "LABEL by class\n  contains 1.2.840.10008.5.1.4.1.1.1.1\n";
        const auto object = [](const char *uid) { return RawDicom().explicitElement(0x00080018, "UI", uid); };
        QTest::newRow("empty") << QByteArray() << Outcome::NotDicom;
        QTest::newRow("text") << QByteArray("hello") << Outcome::NotDicom;
        QTest::newRow("text that names a UID, called .dcm") << text << Outcome::Unreadable;
        QTest::newRow("mark alone") << RawDicom().bytes().left(132) << Outcome::Unreadable;
        QTest::newRow("meta information alone") << RawDicom().bytes() << Outcome::Unreadable;
        QTest::newRow("image") << object("1.2.3.4.5").identification().bytes() << Outcome::Image;
        QTest::newRow("no instance UID") << object("").identification().bytes() << Outcome::MissingUid;
        QTest::newRow("bad instance UID")
            << object("1.2.x").identification().bytes() << Outcome::MalformedUid;
        QTest::newRow("neither patient nor study")
            << object("1.2.3.4.5").bytes() << Outcome::NoPatientOrStudy;
        QTest::newRow("patient without study")
            << object("1.2.3.4.5").explicitElement(0x00100010, "PN", "A^B").bytes() << Outcome::MissingUid;
        QTest::newRow("bare data set")
            << object("1.2.3.4.5").identification().bytes().mid(160) << Outcome::Image;
        QTest::newRow("cut in the last identifier")
            << object("1.2.3.4.5").identification().bytes().chopped(14) << Outcome::MissingUid;
        QTest::newRow("cut behind the identifiers")
            << object("1.2.3.4.5").identification().bytes().chopped(3) << Outcome::Image;
        QTest::newRow("directory of a medium")
            << RawDicom().explicitElement(0x00041220, "SQ", "").bytes() << Outcome::MediaDirectory;
        QTest::newRow("elements out of order")
            << RawDicom().identification().explicitElement(0x00080018, "UI", "1.2.3.4.5").bytes()
            << Outcome::Image;
    }

    void outcomes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(Outcome, expected);
        QCOMPARE(readBytes(bytes).outcome, expected);
    }

    void refusesWhatIsNoFile()
    {
        const QByteArray fifo = QFile::encodeName(m_folder.filePath(QStringLiteral("fifo")));
        QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
        for (const QByteArray &path :
            {fifo, QFile::encodeName(m_folder.path()), QByteArray("/nowhere/file")}) {
            const DicomReadResult result = m_reader.read(path);
            QCOMPARE(result.outcome, Outcome::CannotOpen);
            QVERIFY(!result.detail.isEmpty());
        }
    }

    void values_data()
    {
        QTest::addColumn<quint32>("tag");
        QTest::addColumn<QByteArray>("vr");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Attribute>("attribute");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, quint32 tag, const char *vr, const QByteArray &bytes,
                             Attribute attribute, const char *expected) {
            QTest::newRow(name) << tag << QByteArray(vr) << bytes << attribute << QString::fromUtf8(expected);
        };
        using A = Attribute;
        row("padding", 0x00100020, "LO", "  ID 1  ", A::PatientID, "ID 1");
        row("NUL inside", 0x00100020, "LO", QByteArray("A\0B\0", 4), A::PatientID, "AB");
        row("only NULs", 0x00100020, "LO", QByteArray("\0\0\0\0", 4), A::PatientID, "");
        row("several codes", 0x00080008, "CS", "ORIGINAL\\PRIMARY", A::ImageType, "ORIGINAL\\PRIMARY");
        row("first of several numbers", 0x00281050, "DS", "40 \\80 ", A::WindowCenter, "40");
        row("number with sign", 0x00281052, "DS", "+1.5e3", A::RescaleIntercept, "1.5e3");
        row("text for a number", 0x00200011, "IS", "abc", A::SeriesNumber, "");
        row("hexadecimal is no number", 0x00200011, "IS", "0x10", A::SeriesNumber, "");
        row("infinity is no number", 0x00281053, "DS", "inf", A::RescaleSlope, "");
        row("binary number", 0x00280010, "US", QByteArray("\x00\x02", 2), A::Rows, "512");
        row("binary number as unknown", 0x00280010, "UN", QByteArray("\x00\x02", 2), A::Rows, "512");
        row("binary number as long", 0x00280010, "UL", QByteArray("\x00\x02\x00\x00", 4), A::Rows, "512");
        row("text as unknown", 0x00100020, "UN", "ID2 ", A::PatientID, "ID2");
        row("empty end of a name", 0x00100010, "PN", "A^B^^ =^^= ", A::PatientName, "A^B");
        row("empty middle of a name", 0x00100010, "PN", "A^B^^==C^D^ ", A::PatientName, "A^B==C^D");
        row("name of separators", 0x00100010, "PN", "^^^^", A::PatientName, "");
    }

    void values()
    {
        QFETCH(quint32, tag);
        QFETCH(QByteArray, vr);
        QFETCH(QByteArray, bytes);
        QFETCH(Attribute, attribute);
        QFETCH(QString, expected);
        RawDicom file;
        const auto add = [&](bool here) {
            if (here) {
                file.explicitElement(tag, vr.constData(), bytes);
            }
        };
        add(tag < 0x00080018);
        file.explicitElement(0x00080018, "UI", "1.2.3.4.5");
        add(tag > 0x00080018 && tag < 0x00200000);
        file.explicitElement(0x0020000d, "UI", "1.2.3").explicitElement(0x0020000e, "UI", "1.2.3.4");
        add(tag > 0x00200000);
        const DicomReadResult result = readBytes(file.bytes());
        QCOMPARE(result.outcome, Outcome::Image);
        QCOMPARE(result.header[attribute], expected);
        QCOMPARE(result.header[attribute].isNull(), expected.isEmpty());
    }

    void longTextIsCut()
    {
        const QByteArray start = RawDicom().explicitElement(0x00080018, "UI", "1.2.3.4.5").bytes();
        for (const int size : {65534, 1 << 20}) {
            const QByteArray name(size, 'A');
            const QByteArray rest =
                RawDicom().explicitElement(0x00100010, "UN", name).identification().bytes();
            const DicomReadResult result = readBytes(start + rest.mid(160));
            QCOMPARE(result.outcome, Outcome::Image);
            QCOMPARE(result.header[Attribute::PatientName].size(), qMin(size, 65536));
        }
    }

    void readsBeyondItsWindow()
    {
        // The identification lies at every place around the border of the first read, behind a private value.
        for (int privateSize = 32 * 1024 - 300; privateSize < 32 * 1024; privateSize += 2) {
            const RawDicom file = RawDicom()
                                      .explicitElement(0x00080018, "UI", "1.2.3.4.5")
                                      .explicitElement(0x00091001, "OB", QByteArray(privateSize, '\x10'))
                                      .explicitElement(0x00100010, "PN", "Border^Name")
                                      .identification();
            const DicomReadResult result = readBytes(file.bytes());
            QCOMPARE(result.outcome, Outcome::Image);
            QCOMPARE(result.header[Attribute::PatientName], QStringLiteral("Border^Name"));
            QCOMPARE(result.header[Attribute::InstanceNumber], QStringLiteral("7"));
        }
    }

    void survivesNesting_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<bool>("closed");
        QTest::addColumn<bool>("forDcmtk");
        QTest::newRow("deep") << 1000 << true << false;
        QTest::newRow("very deep") << 30000 << true << false;
        QTest::newRow("deep, careful reader") << 1000 << true << true;
        QTest::newRow("deeper, careful reader") << 2000 << true << true;
        QTest::newRow("too deep for it") << 30000 << true << true;
        QTest::newRow("never closed") << 30000 << false << false;
    }

    void survivesNesting()
    {
        QFETCH(int, depth);
        QFETCH(bool, closed);
        QFETCH(bool, forDcmtk);
        const QByteArray open = RawDicom::tagBytes(0x00081140) + "SQ" + RawDicom::number(0, 2)
            + RawDicom::number(0xffffffff, 4) + RawDicom::tagBytes(0xfffee000)
            + RawDicom::number(0xffffffff, 4);
        const QByteArray close = RawDicom::tagBytes(0xfffee00d) + RawDicom::number(0, 4)
            + RawDicom::tagBytes(0xfffee0dd) + RawDicom::number(0, 4);
        RawDicom file;
        file.explicitElement(0x00080018, "UI", "1.2.3.4.5");
        // A wanted text of unknown VR is nothing for the scanner.
        forDcmtk ? file.explicitElement(0x00080070, "UN", "maker") : file;
        file.raw(open.repeated(depth)).raw(closed ? close.repeated(depth) : QByteArray()).identification();
        const DicomReadResult result = readBytes(file.bytes());
        const bool readable = closed && !(forDcmtk && depth > 10000);
        QCOMPARE(result.outcome == Outcome::Image, readable);
    }

    void isNotKeptBusyByDisorder()
    {
        RawDicom file("1.2.840.10008.1.2");
        for (quint32 element = 0xffff; element > 0; --element) {
            file.implicitElement(0x00090000 + element, QByteArray());
        }
        const std::clock_t start = std::clock();
        QVERIFY(readBytes(file.bytes()).outcome != Outcome::Image);
        QVERIFY(secondsSince(start) < 10); // minutes without a bound
    }

    void uid_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        QTest::newRow("plain") << QStringLiteral("1.2.840.10008") << true;
        QTest::newRow("64 characters") << QStringLiteral("1.") + QString(62, QLatin1Char('2')) << true;
        QTest::newRow("65 characters") << QStringLiteral("1.") + QString(63, QLatin1Char('2')) << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("one component") << QStringLiteral("12345") << false;
        QTest::newRow("trailing dot") << QStringLiteral("1.2.") << false;
        QTest::newRow("leading dot") << QStringLiteral(".1.2") << false;
        QTest::newRow("empty component") << QStringLiteral("1..2") << false;
        QTest::newRow("letter") << QStringLiteral("1.2a.3") << false;
        QTest::newRow("blank") << QStringLiteral("1.2 .3") << false;
        QTest::newRow("path") << QStringLiteral("../../x") << false;
        QTest::newRow("other digits") << QString::fromUtf8("1.٢.3") << false;
    }

    void uid()
    {
        QFETCH(QString, text);
        QFETCH(bool, expected);
        QCOMPARE(DicomReader::isUid(text), expected);
    }

private:
    DicomReadResult readBytes(const QByteArray &bytes, const QString &name = QStringLiteral("file.dcm"))
    {
        writeFile(m_folder.filePath(name), bytes);
        return m_reader.read(QFile::encodeName(m_folder.filePath(name)));
    }

    QTemporaryDir m_folder;
    DicomReader m_reader;
};

PM_TEST_MAIN(DicomReaderTest)
#include "tst_dicomreader.moc"
