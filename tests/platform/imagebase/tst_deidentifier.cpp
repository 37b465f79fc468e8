#include "datatruth.h"
#include "deidentifier.h"
#include "dicomfilebuilder.h"
#include "imagefile.h"
#include "pixelframe.h"
#include "rawdicom.h"
#include "sitekey.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QtConcurrentMap>
#include <QtTest>

#include <functional>

#include <sys/stat.h>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

const QByteArray key(SiteKey::length, 'k');
constexpr char systemPython[] = "/usr/bin/python3"; // Debian's modules are its

struct Pair
{
    QString original;
    QString copy;
    DeidentifiedFile result;
};

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    constexpr int longest = 120 * 1000;
    return process.waitForFinished(longest) ? process.readAll() : QByteArray("did not run");
}

/// The kinds of errors that the validator finds, without the values that it quotes.
QSet<QByteArray> errorsOf(const QString &path)
{
    QSet<QByteArray> errors;
    const QByteArray output = outputOf(QStringLiteral("dciodvfy"), {path});
    for (QByteArray line : output.split('\n')) {
        if (line.startsWith("Error")) {
            errors.insert(QString::fromLatin1(line)
                              .remove(QRegularExpression(QStringLiteral("[<(=\\[][^>)\\]]*[>)\\]]|[\\d.]+")))
                              .toLatin1());
        }
    }
    return errors;
}

bool isReadWhole(const QString &path)
{
    DcmFileFormat file;
    return file.loadFile(OFFilename(QFile::encodeName(path).constData())).good()
        && file.loadAllDataIntoMemory().good();
}

bool haveSamePixels(const QString &one, const QString &other)
{
    ImageFile first;
    ImageFile second;
    const PixelProblem expected = first.open(one);
    if (second.open(other) != expected || expected != PixelProblem::None) {
        return second.open(other) == expected;
    }
    PixelFrame frame;
    PixelFrame copy;
    return first.readFrame(0, frame) == second.readFrame(0, copy) && frame.grey == copy.grey
        && frame.rgb == copy.rgb;
}

} // namespace

class DeidentifierTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theWholeCorpusSaysNothingOfWhoseItIs();
    void copiesAreAsValidAsTheirOriginals();
    void picturesAreTheSame();
    void optionsKeepWhatTheyPromise();
    void theSameKeyGivesTheSameUids();
    void whatIsNotUnderstoodIsRefused();
    void keyIsForItsOwnerAlone();

private:
    QVector<Pair> makeAll(const QString &name, const DeidentifyOptions &options);
    QByteArray faultsOf(const QVector<Pair> &pairs, const QStringList &arguments);
    DeidentifiedFile make(
        const QString &original, const QString &copy, const DeidentifyOptions &options = {});
    QString dumpOf(const QString &path);

    QTemporaryDir m_folder;
    QVector<Pair> m_pairs;
    std::atomic<bool> m_cancelled{false};
};

DeidentifiedFile DeidentifierTest::make(
    const QString &original, const QString &copy, const DeidentifyOptions &options)
{
    return Deidentifier(options, Pseudonyms(key))
        .run(QFile::encodeName(original), QFile::encodeName(copy), m_cancelled);
}

QString DeidentifierTest::dumpOf(const QString &path)
{
    return QString::fromLatin1(outputOf(QStringLiteral("dcmdump"), {QStringLiteral("+L"), path}));
}

/// Copies of all readable files of the corpus.
QVector<Pair> DeidentifierTest::makeAll(const QString &name, const DeidentifyOptions &options)
{
    QVector<Pair> pairs;
    QDir(m_folder.path()).mkdir(name);
    for (const DataTruth &truth : readDataTruth()) {
        if (truth.verdict == QLatin1String("index")) {
            const QString copy = m_folder.filePath(QStringLiteral("%1/%2.dcm").arg(name).arg(pairs.size()));
            pairs.append({sharedData() + QLatin1Char('/') + truth.path, copy, {}});
        }
    }
    QtConcurrent::blockingMap(
        pairs, [this, &options](Pair &pair) { pair.result = make(pair.original, pair.copy, options); });
    const auto isRefused = [](const Pair &pair) { return pair.result.problem != DeidentifyProblem::None; };
    pairs.erase(std::remove_if(pairs.begin(), pairs.end(), isRefused), pairs.end());
    return pairs;
}

/// What another reader has to say against copies.
QByteArray DeidentifierTest::faultsOf(const QVector<Pair> &pairs, const QStringList &arguments)
{
    QByteArray list;
    for (const Pair &pair : pairs) {
        list += QFile::encodeName(pair.original) + '\t' + QFile::encodeName(pair.copy) + '\n';
    }
    const QString listPath = m_folder.filePath(QStringLiteral("list"));
    writeFile(listPath, list);
    constexpr int mostShown = 2000;
    return outputOf(QLatin1String(systemPython),
        QStringList({QStringLiteral("-W"), QStringLiteral("ignore"),
            QStringLiteral(PM_SOURCE_DIR "/tests/platform/imagebase/checkdeidentified.py"),
            QStringLiteral(PM_SOURCE_DIR "/platform/imagebase/deidentify/profile.tsv"), listPath})
            + arguments)
        .left(mostShown);
}

void DeidentifierTest::initTestCase()
{
    if (!sharedData().isEmpty()) {
        m_pairs = makeAll(QStringLiteral("profile"), {});
    }
}

void DeidentifierTest::theWholeCorpusSaysNothingOfWhoseItIs()
{
    if (sharedData().isEmpty()) {
        QSKIP("no shared data");
    }
    QVERIFY2(m_pairs.size() > 830, QByteArray::number(m_pairs.size()).constData());
    const QByteArray faults = faultsOf(m_pairs, {});
    QVERIFY2(faults.isEmpty(), faults.constData());

    DeidentifyOptions options;
    options.shiftDates = options.cleanDescriptors = options.keepCharacteristics = true;
    const QByteArray others =
        faultsOf(makeAll(QStringLiteral("options"), options), {QStringLiteral("options")});
    QVERIFY2(others.isEmpty(), others.constData());
}

void DeidentifierTest::copiesAreAsValidAsTheirOriginals()
{
    const auto worse = [](const Pair &pair) {
        // The validator does not unpack, and our copies are unpacked; some originals it cannot make out.
        const QSet<QByteArray> known = errorsOf(pair.original);
        const bool isComparable = !known.contains("Error - Dicom dataset read failed")
            && !known.contains("Error - Information Object Not found");
        const QSet<QByteArray> added = isComparable ? errorsOf(pair.copy) - known : QSet<QByteArray>();
        QByteArray told = isReadWhole(pair.copy) ? QByteArray() : QByteArray("does not read whole\n");
        for (const QByteArray &error : added) {
            told += error + '\n';
        }
        return told.isEmpty() ? told : QFile::encodeName(pair.original) + '\n' + told;
    };
    const QByteArray faults = QtConcurrent::blockingMappedReduced<QByteArray>(m_pairs,
        std::function<QByteArray(const Pair &)>(worse),
        [](QByteArray &all, const QByteArray &one) { all += one; });
    QVERIFY2(faults.isEmpty(), faults.left(20000).constData());
}

void DeidentifierTest::picturesAreTheSame()
{
    for (const Pair &pair : qAsConst(m_pairs)) {
        QVERIFY2(haveSamePixels(pair.original, pair.copy), qPrintable(pair.original));
    }
}

void DeidentifierTest::optionsKeepWhatTheyPromise()
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
    QCOMPARE(dump.count(QLatin1String("CodeValue")), 4);
}

void DeidentifierTest::theSameKeyGivesTheSameUids()
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

void DeidentifierTest::whatIsNotUnderstoodIsRefused()
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

void DeidentifierTest::keyIsForItsOwnerAlone()
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

PM_TEST_MAIN(DeidentifierTest)
#include "tst_deidentifier.moc"
