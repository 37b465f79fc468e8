#include "dcmtkheaderreader.h"
#include "dicomreader.h"
#include "headerscanner.h"
#include "testfiles.h"
#include "testmain.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <ctime>

#include <sys/resource.h>

namespace {

QStringList corpusFiles(const QString &folder = QString())
{
    return filesBelow(sharedData() + folder);
}

/// One change of the kinds that broken disks, broken transfers and bad intentions make.
void mutate(QByteArray &bytes, QRandomGenerator &random)
{
    const int at = random.bounded(bytes.size());
    switch (random.bounded(6)) {
    case 0:
        bytes.truncate(at);
        break;
    case 1:
        bytes[at] = static_cast<char>(0xff);
        break;
    case 2:
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << random.bounded(8)));
        break;
    case 3:
        bytes.replace(at, 4, QByteArray::fromRawData("\xff\xff\xff\x7f", 4));
        break;
    case 4:
        bytes.insert(at, bytes.mid(random.bounded(bytes.size()), random.bounded(64)));
        break;
    default:
        bytes.remove(at, random.bounded(16));
    }
}

qint64 peakMegabytes()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

} // namespace

/// The two readers behind DicomReader, against each other and against spoilt files.
class HeaderScannerTest : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithDcmtk()
    {
        if (sharedData().isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        FileWindow file;
        HeaderValues scanned;
        HeaderValues careful;
        QStringList wrong;
        int compared = 0;
        for (const QString &path : corpusFiles()) {
            QVERIFY(file.open(QFile::encodeName(path)));
            scanned.begin();
            careful.begin();
            if (!HeaderScanner::scan(file, scanned) || scanned.isMediaDirectory()
                || !DcmtkHeaderReader::read(file, careful).complete || !careful.isIdentified()) {
                continue;
            }
            ++compared;
            for (const AttributeInfo &info : attributeTable()) {
                const QString &one = scanned.header()[info.attribute];
                const QString &other = careful.header()[info.attribute];
                if (one != other || one.isNull() != other.isNull()) {
                    wrong.append(QStringLiteral("%1 %2: '%3' and '%4'")
                                     .arg(path, QLatin1String(info.keyword), one, other));
                }
            }
        }
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
        QVERIFY2(compared > 700, qPrintable(QString::number(compared))); // the fast way is the usual one
    }

    void survivesMutations_data()
    {
        QTest::addColumn<quint32>("seed");
        for (const quint32 seed : {20240131U, 1U, 77U}) {
            QTest::newRow(qPrintable(QString::number(seed))) << seed;
        }
    }

    void survivesMutations()
    {
        if (sharedData().isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        QStringList sources = corpusFiles();
        sources.erase(std::remove_if(sources.begin(), sources.end(),
                          [](const QString &path) { return QFileInfo(path).size() > 20000; }),
            sources.end());
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("spoilt.dcm"));
        DicomReader reader;
        const qint64 before = peakMegabytes();
        for (int source = 0; source < 20; ++source) {
            const QString original = sources[random.bounded(sources.size())];
            const QByteArray bytes = bytesOf(original) + ' ';
            for (int variant = 0; variant < 100; ++variant) {
                QByteArray spoilt = bytes.left(8000);
                for (int change = random.bounded(1, 5); change > 0 && !spoilt.isEmpty(); --change) {
                    mutate(spoilt, random);
                }
                writeFile(path, spoilt);
                const std::clock_t start = std::clock();
                const DicomReadResult result = reader.read(QFile::encodeName(path));
                QVERIFY2(std::clock() - start < 3 * CLOCKS_PER_SEC, qPrintable(original));
                QVERIFY(result.outcome != DicomReadResult::Outcome::CannotOpen);
                QVERIFY(result.outcome != DicomReadResult::Outcome::Image
                    || DicomReader::isUid(result.header[Attribute::SOPInstanceUID]));
            }
        }
        // A length that was believed would show as gigabytes; instrumented builds keep much of what was
        // freed.
        QVERIFY2(peakMegabytes() - before < 1000, qPrintable(QString::number(peakMegabytes() - before)));
    }
};

PM_TEST_MAIN(HeaderScannerTest)
#include "tst_headerscanner.moc"
