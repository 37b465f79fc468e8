#include "imagefile.h"
#include "pixelframe.h"
#include "rawdicom.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDirIterator>
#include <QtEndian>
#include <QtTest>

#include <cmath>

#include <sys/resource.h>

Q_DECLARE_METATYPE(ObjectKind)
Q_DECLARE_METATYPE(PixelProblem)

namespace {

constexpr char explicitLittle[] = "1.2.840.10008.1.2.1";

/// An image as a file says it is: two rows of three pixels of 8 bits, unless set otherwise.
struct Described
{
    QByteArray photometric = "MONOCHROME2";
    int samples = 1;
    int planar = 0;
    QByteArray frames = "1";
    int rows = 2;
    int columns = 3;
    int allocated = 8;
    int stored = 8;
    int isSigned = 0;
    QByteArray palette; ///< of all three colours
};

QByteArray fileOf(const Described &image, const QByteArray &pixels, const char *syntax = explicitLittle)
{
    RawDicom file(syntax);
    const auto number = [&file](quint32 tag, int value) {
        file.explicitElement(tag, "US", RawDicom::number(quint32(value), 2));
    };
    file.explicitElement(0x00080016, "UI", "1.2.840.10008.5.1.4.1.1.7")
        .explicitElement(0x00080018, "UI", "1.2.3.4.5")
        .identification();
    number(0x00280002, image.samples);
    file.explicitElement(0x00280004, "CS", image.photometric);
    number(0x00280006, image.planar);
    file.explicitElement(0x00280008, "IS", image.frames);
    for (const auto &[tag, side] : {std::pair(0x00280010U, image.rows), {0x00280011U, image.columns}}) {
        const bool isWide = side > 0xffff;
        file.explicitElement(tag, isWide ? "UL" : "US", RawDicom::number(quint32(side), isWide ? 4 : 2));
    }
    number(0x00280100, image.allocated);
    number(0x00280101, image.stored);
    number(0x00280102, image.stored - 1);
    number(0x00280103, image.isSigned);
    file.explicitElement(0x00281052, "DS", "-10").explicitElement(0x00281053, "DS", "2");
    if (!image.palette.isEmpty()) {
        const QByteArray description = RawDicom::number(quint32(image.palette.size()), 2)
            + RawDicom::number(0, 2) + RawDicom::number(8, 2);
        for (const quint32 tag : {0x00281101, 0x00281102, 0x00281103}) {
            file.explicitElement(tag, "US", description);
        }
        for (const quint32 tag : {0x00281201, 0x00281202, 0x00281203}) {
            file.explicitElement(tag, "OW", image.palette);
        }
    }
    return file.raw(pixels).bytes();
}

QByteArray native(const QByteArray &bytes, const char *vr = "OW")
{
    return RawDicom::tagBytes(0x7fe00010) + vr + RawDicom::number(0, 2)
        + RawDicom::number(quint32(bytes.size()), 4) + bytes;
}

QByteArray encapsulated(const QByteArray &fragment)
{
    const auto item = [](const QByteArray &bytes) {
        return RawDicom::tagBytes(0xfffee000) + RawDicom::number(quint32(bytes.size()), 4) + bytes;
    };
    return RawDicom::tagBytes(0x7fe00010) + "OB" + RawDicom::number(0, 2) + RawDicom::number(0xffffffff, 4)
        + item({}) + item(fragment) + RawDicom::tagBytes(0xfffee0dd) + RawDicom::number(0, 4);
}

/// One block of grey whose every pass is valid and says nothing new.
QByteArray progressiveJpeg(int passes)
{
    const auto segment = [](char marker, const QByteArray &bytes) {
        return QByteArray("\xff") + marker + '\0' + char(bytes.size() + 2) + bytes;
    };
    const QByteArray oneCode = '\1' + QByteArray(15, '\0') + '\0';
    const QByteArray bits("\x7f");
    return QByteArray("\xff\xd8") + segment('\xdb', '\0' + QByteArray(64, '\1'))
        + segment('\xc2', QByteArray("\x08\0\x08\0\x08\1\1\x11\0", 9)) + segment('\xc4', '\0' + oneCode)
        + segment('\xc4', '\x10' + oneCode) + segment('\xda', QByteArray("\1\1\0\0\0\0", 6)) + bits
        + (segment('\xda', QByteArray("\1\1\0\1\x3f\0", 6)) + bits).repeated(passes - 1) + "\xff\xd9";
}

/// Two rows of three pixels of 8 bits, written as words.
QByteArray bigEndianFile(const QByteArray &pixels, const QByteArray &frames)
{
    RawDicom file("1.2.840.10008.1.2.2");
    const auto big = [](int value) { return QByteArray(1, char(value >> 8)) + char(value & 0xff); };
    const auto element = [&](int group, int number, const char *vr, const QByteArray &value) {
        const bool isLong = qstrcmp(vr, "OW") == 0;
        file.raw(big(group) + big(number) + vr + (isLong ? QByteArray(4, '\0') : QByteArray())
            + big(value.size()) + value);
    };
    element(0x0008, 0x0016, "UI", "1.2.840.10008.5.1.4.1.1.7\0");
    for (const int uid : {0x00080018, 0x0020000d, 0x0020000e}) {
        element(uid >> 16, uid & 0xffff, "UI", "1.23");
    }
    element(0x0028, 0x0004, "CS", "MONOCHROME2 ");
    element(0x0028, 0x0008, "IS", frames);
    for (const auto &[number, value] : {std::pair(0x10, 1), {0x11, 3}, {0x100, 8}, {0x101, 8}}) {
        element(0x0028, number, "US", big(value));
    }
    element(0x7fe0, 0x0010, "OW", pixels);
    return file.bytes();
}

/// A picture's values from the top left: greys, or colours as 0xrrggbb.
QList<int> valuesOf(const PixelFrame &frame)
{
    QList<int> values;
    for (const quint16 grey : frame.grey) {
        values.append(int(std::lround(frame.valueOf(grey))));
    }
    for (int i = 0; i < frame.rgb.size(); i += 3) {
        values.append(frame.rgb[i] << 16 | frame.rgb[i + 1] << 8 | frame.rgb[i + 2]);
    }
    return values;
}

double meanDifference(const PixelFrame &a, const PixelFrame &b)
{
    double sum = 0;
    for (int i = 0; i < a.grey.size(); ++i) {
        sum += std::abs(a.valueOf(a.grey[i]) - b.valueOf(b.grey[i]));
    }
    return sum / a.grey.size();
}

} // namespace

class ImageFileTest : public QObject
{
    Q_OBJECT

private slots:
    void formats_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("number");
        QTest::addColumn<QList<int>>("expected");
        const auto row = [](const char *name, const Described &image, const QByteArray &pixels,
                             const QList<int> &expected, int number = 0) {
            QTest::newRow(name) << fileOf(image, native(pixels)) << number << expected;
        };
        Described grey;
        row("8 bits, with slope and intercept", grey, QByteArray("\0\1\2\3\4\377", 6),
            {-10, -8, -6, -4, -2, 500});
        Described number12 = grey;
        number12.allocated = 16;
        number12.stored = 12;
        number12.isSigned = 1;
        row("12 bits, signed, with foreign bits above", number12,
            QByteArray("\xff\x0f\x00\x08\x01\xf0\xff\x07\x00\x00\x02\x00", 12),
            {-12, -4106, -8, 4084, -10, -6});
        Described wide = grey;
        wide.allocated = wide.stored = 32;
        wide.columns = 1;
        row("32 bits", wide, QByteArray("\0\0\0\0\0\0\1\0", 8), {-10, 131062});
        Described bit = grey;
        bit.allocated = bit.stored = 1;
        bit.frames = "2";
        row("single bits, a frame that begins within a byte", bit, QByteArray("\x80\x0a", 2),
            {-10, -8, -10, -8, -10, -8}, 1);
        Described colour;
        colour.samples = 3;
        colour.columns = 1;
        colour.photometric = "RGB";
        row("red, green, blue", colour, QByteArray("\1\2\3\4\5\6", 6), {0x010203, 0x040506});
        colour.planar = 1;
        row("colour by colour", colour, QByteArray("\1\4\2\5\3\6", 6), {0x010203, 0x040506});
        colour.planar = 0;
        colour.photometric = "YBR_FULL";
        row("luminance and colour differences", colour, QByteArray("\x4c\x55\xff\x80\x80\x80", 6),
            {0xfe0000, 0x808080});
        colour.photometric = "YBR_FULL_422";
        colour.rows = 1;
        colour.columns = 2;
        row("colour shared by two pixels", colour, QByteArray("\x10\x20\x80\x80", 4), {0x101010, 0x202020});
        QTest::newRow("bytes in words of a big endian file, a frame that begins within a word")
            << bigEndianFile(QByteArray("\2\1\4\3\6\5", 6), "2 ") << 1 << QList<int>{4, 5, 6};
        Described palette = grey;
        palette.photometric = "PALETTE COLOR";
        palette.palette = QByteArray("\x10\x20\x30\x40", 4);
        row("palette, with a value beyond it", palette, QByteArray("\0\1\2\3\4\0", 6),
            {0x101010, 0x202020, 0x303030, 0x404040, 0x404040, 0x101010});
    }

    void formats()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, number);
        QFETCH(QList<int>, expected);
        PixelFrame frame;
        QCOMPARE(read(bytes, frame, number), PixelProblem::None);
        QCOMPARE(valuesOf(frame), expected);
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<PixelProblem>("expected");
        Described huge;
        huge.rows = huge.columns = 65535;
        const QByteArray six(6, '\1');
        QTest::newRow("huge, without data") << fileOf(huge, {}) << PixelProblem::TooLarge;
        QTest::newRow("huge, compressed")
            << fileOf(huge, encapsulated(six), "1.2.840.10008.1.2.4.90") << PixelProblem::TooLarge;
        Described many;
        many.frames = "1000000";
        QTest::newRow("a million frames") << fileOf(many, native(six)) << PixelProblem::TooManyFrames;
        QTest::newRow("no data") << fileOf({}, {}) << PixelProblem::Truncated;
        QTest::newRow("half the data") << fileOf({}, native(six.left(4))) << PixelProblem::Truncated;
        QTest::newRow("cut file") << fileOf({}, native(six)).chopped(1) << PixelProblem::Truncated;
        QTest::newRow("compressed, without fragments")
            << fileOf({}, encapsulated({}).left(20), "1.2.840.10008.1.2.5") << PixelProblem::Truncated;
        QTest::newRow("rubbish for RLE")
            << fileOf({}, encapsulated(six), "1.2.840.10008.1.2.5") << PixelProblem::BadData;
        const QByteArray largeJpeg(
            "\xff\xd8\xff\xc0\x00\x0b\x08\xff\xff\xff\xff\x01\x01\x11\x00\xff\xd9\x00", 18);
        QTest::newRow("a JPEG larger than its object")
            << fileOf({}, encapsulated(largeJpeg), "1.2.840.10008.1.2.4.50") << PixelProblem::BadData;
        QTest::newRow("video") << fileOf({}, encapsulated(six), "1.2.840.10008.1.2.4.102")
                               << PixelProblem::Video;
        Described block;
        block.rows = block.columns = 8;
        for (const auto &[passes, expected] :
            {std::pair(10, PixelProblem::None), std::pair(1000, PixelProblem::BadData)}) {
            QTest::addRow("a JPEG of %d passes", passes)
                << fileOf(block, encapsulated(progressiveJpeg(passes)), "1.2.840.10008.1.2.4.55") << expected;
        }
        Described wrapping;
        wrapping.rows = wrapping.columns = 1 << 30;
        wrapping.samples = 3;
        wrapping.allocated = wrapping.stored = 16;
        wrapping.photometric = "RGB";
        QTest::newRow("sides of 32 bits, whose product wraps")
            << fileOf(wrapping, native(six)) << PixelProblem::TooLarge;
        Described odd;
        odd.allocated = 24;
        QTest::newRow("24 bits") << fileOf(odd, native(QByteArray(18, '\1')))
                                 << PixelProblem::UnsupportedFormat;
        Described flat;
        flat.rows = 0;
        QTest::newRow("no rows") << fileOf(flat, native(six)) << PixelProblem::UnsupportedFormat;
        QTest::newRow("no DICOM") << QByteArray("hello") << PixelProblem::NotDicom;
    }

    void refusals()
    {
        QFETCH(QByteArray, bytes);
        PixelFrame frame;
        frame.columns = 7;
        QTEST(read(bytes, frame), "expected");
        QCOMPARE(
            frame.columns == 7, QTest::currentDataTag() != QByteArray("a JPEG of 10 passes")); // left alone
    }

    void sameImageInEverySyntax()
    {
        const QString folder =
            sharedData() + QStringLiteral("/03-transfer-syntaxes/same-ct-in-15-syntaxes/CTImage.dcm_");
        if (sharedData().isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        ImageFile plain;
        PixelFrame reference;
        QCOMPARE(
            plain.open(folder + QStringLiteral("LittleEndianExplicitTransferSyntax_1.2.840.10008.1.2.1.dcm")),
            PixelProblem::None);
        QCOMPARE(plain.readFrame(0, reference), PixelProblem::None);
        QCOMPARE(plain.info().values.windows.value(0).window, (WindowLevel{40, 400}));
        int read = 0;
        for (const QString &path : QDir(QFileInfo(folder).path()).entryList(QDir::Files)) {
            ImageFile file;
            PixelFrame frame;
            QCOMPARE(file.open(QFileInfo(folder).path() + QLatin1Char('/') + path), PixelProblem::None);
            QVERIFY2(file.readFrame(0, frame) == PixelProblem::None, qPrintable(path));
            QCOMPARE(frame.grey.size(), reference.grey.size());
            static const QRegularExpression lossy(
                QStringLiteral("Process(1|2_4|6_8|10_12)Transfer|JPEG2000Transfer|JPEGLSLossyTransfer"));
            const bool isLossy = lossy.match(path).hasMatch();
            const double difference = meanDifference(frame, reference);
            QVERIFY2(isLossy ? difference < 30 : difference == 0,
                qPrintable(path + QStringLiteral(": ") + QString::number(difference)));
            ++read;
        }
        QCOMPARE(read, 15);
    }

    /// A JP2 file whose palette makes one component of three, behind what its stream has said.
    void paletteAroundAStream()
    {
        QFile file(sharedData() + QStringLiteral("/03-transfer-syntaxes/rare/HTJ2KLossless_08_RGB.dcm"));
        if (sharedData().isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const int begin = bytes.indexOf("\xff\x4f\xff\x51");
        const QByteArray stream =
            bytes.mid(begin, int(qFromLittleEndian<quint32>(bytes.constData() + begin - 4)));
        const auto box = [](const char *type, const QByteArray &content) {
            QByteArray length(4, '\0');
            qToBigEndian(quint32(content.size() + 8), length.data());
            return length + type + content;
        };
        QByteArray colours;
        for (int i = 0; i < 256; ++i) {
            colours += char(i);
        }
        const QByteArray size = stream.mid(12, 4) + stream.mid(8, 4);
        const QByteArray header = box("ihdr", size + QByteArray("\0\3\7\7\0\0", 6))
            + box("colr", QByteArray("\1\0\0\0\0\0\x11", 7))
            + box("pclr", QByteArray("\1\0\1\7", 4) + colours) + box("cmap", QByteArray("\0\0\1\0", 4));
        QByteArray jp2 = box("jP  ", "\r\n\x87\n") + box("ftyp", QByteArray("jp2 \0\0\0\0jp2 ", 12))
            + box("jp2h", header) + box("jp2c", stream);
        jp2.append(jp2.size() % 2, '\0');
        Described image;
        image.samples = 3;
        image.photometric = "RGB";
        image.columns = qFromBigEndian<qint32>(stream.constData() + 8);
        image.rows = qFromBigEndian<qint32>(stream.constData() + 12);
        PixelFrame frame;
        QCOMPARE(
            read(fileOf(image, encapsulated(jp2), "1.2.840.10008.1.2.4.202"), frame), PixelProblem::None);
        QCOMPARE(frame.rgb.size(), image.rows * image.columns * 3);
    }

    /// Every file, damaged and hostile ones too, ends in a picture or in a reason, within the memory allowed.
    void corpusIsBounded()
    {
        if (sharedData().isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        int pictures = 0;
        QDirIterator walk(sharedData(), QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            ImageFile file;
            PixelFrame frame;
            PixelProblem problem = file.open(walk.next());
            const int frames = qMin(file.info().frames, 20);
            for (int number = 0; number < frames && problem == PixelProblem::None; ++number) {
                problem = file.readFrame(number, frame);
                pictures += problem == PixelProblem::None && number == 0 ? 1 : 0;
            }
            QVERIFY2(problem != PixelProblem::None || frame.bytes() > 0, qPrintable(walk.filePath()));
        }
        QVERIFY2(pictures > 700, qPrintable(QString::number(pictures)));
        rusage usage = {};
        ::getrusage(RUSAGE_SELF, &usage);
        QVERIFY2(usage.ru_maxrss < 1024 * 1024, qPrintable(QString::number(usage.ru_maxrss)));
    }

    void corpusHoldsWhatItShould_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("frames");
        QTest::addColumn<ObjectKind>("kind");
        QTest::addColumn<PixelProblem>("problem");
        const auto row = [](const char *path, int frames, ObjectKind kind, PixelProblem problem) {
            QTest::newRow(path) << QString::fromLatin1(path) << frames << kind << problem;
        };
        using K = ObjectKind;
        using P = PixelProblem;
        row("03-transfer-syntaxes/rare/HTJ2K_08_RGB.dcm", 1, K::Image, P::None);
        row("03-transfer-syntaxes/rare/liver_deflate.dcm", 3, K::Image, P::None);
        row("05-object-types/pr-hp-lut/jpeg2000-multiframe-multifragments.dcm", 19, K::Image, P::None);
        row("05-object-types/multiframe/parametric_map_float.dcm", 1, K::Image, P::None);
        row("05-object-types/sr/test-SR.dcm", 1, K::Report, P::NoPixels);
        row("05-object-types/pr-hp-lut/prLUTs.dcm", 1, K::PresentationState, P::NoPixels);
        row("05-object-types/ecg-palette/waveform_ecg.dcm", 1, K::Waveform, P::NoPixels);
        row("08-hostile/pixel-data/TC0339_mf_nf_million.dcm", 999999, K::Image, P::TooManyFrames);
        row("08-hostile/pixel-data/TC0851_rle_seg_expand_bomb.dcm", 1, K::Image, P::BadData);
    }

    void corpusHoldsWhatItShould()
    {
        if (sharedData().isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        QFETCH(QString, path);
        ImageFile file;
        PixelFrame frame;
        PixelProblem problem = file.open(sharedData() + QLatin1Char('/') + path);
        for (int number = 0; number < file.info().frames && problem == PixelProblem::None; ++number) {
            problem = file.readFrame(number, frame);
        }
        QTEST(problem, "problem");
        QTEST(file.info().frames, "frames");
        QTEST(file.info().kind, "kind");
    }

private:
    PixelProblem read(const QByteArray &bytes, PixelFrame &frame, int number = 0)
    {
        const QString path = m_folder.filePath(QStringLiteral("image.dcm"));
        writeFile(path, bytes);
        ImageFile image;
        const PixelProblem problem = image.open(path);
        return problem == PixelProblem::None ? image.readFrame(number, frame) : problem;
    }

    QTemporaryDir m_folder;
};

PM_TEST_MAIN(ImageFileTest)
#include "tst_imagefile.moc"
