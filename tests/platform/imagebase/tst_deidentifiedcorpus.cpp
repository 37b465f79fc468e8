// Copies of every readable file of the corpus, looked at by other readers than ours.
#include "datatruth.h"
#include "deidentifier.h"
#include "dicomservers.h"
#include "imagefile.h"
#include "imageinfo.h"
#include "pixelframe.h"
#include "sitekey.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtConcurrentMap>
#include <QtTest>

#include <functional>

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

/// The kinds of errors that the validator finds, without the values that it quotes.
QSet<QByteArray> errorsOf(const QString &path)
{
    QSet<QByteArray> errors;
    const QByteArray output = runTool(QStringLiteral("dciodvfy"), {path}).output;
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
    const int frames = first.info().frames;
    constexpr int mostRead = 10;
    for (int number = 0; number < frames; number += qMax(1, frames / mostRead)) {
        PixelFrame frame;
        PixelFrame copy;
        if (first.readFrame(number, frame) != second.readFrame(number, copy) || frame.grey != copy.grey
            || frame.rgb != copy.rgb) {
            return false;
        }
    }
    return second.info().frames == frames;
}

} // namespace

class DeidentifiedCorpusTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const char *tool : {"dciodvfy", "dcmdump"}) {
            QVERIFY2(!QStandardPaths::findExecutable(QLatin1String(tool)).isEmpty(), tool);
        }
        if (!sharedData().isEmpty()) {
            m_pairs = makeAll(QStringLiteral("profile"), {});
        }
    }

    void theWholeCorpusSaysNothingOfWhoseItIs()
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

    void copiesAreAsValidAsTheirOriginals()
    {
        if (m_pairs.isEmpty()) {
            QSKIP("no shared data");
        }
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

    void picturesAreTheSame()
    {
        if (m_pairs.isEmpty()) {
            QSKIP("no shared data");
        }
        for (const Pair &pair : qAsConst(m_pairs)) {
            QVERIFY2(haveSamePixels(pair.original, pair.copy), qPrintable(pair.original));
        }
    }

private:
    /// Copies of all readable files of the corpus.
    QVector<Pair> makeAll(const QString &name, const DeidentifyOptions &options)
    {
        QVector<Pair> pairs;
        QDir(m_folder.path()).mkdir(name);
        for (const DataTruth &truth : readDataTruth()) {
            if (truth.verdict == QLatin1String("index")) {
                const QString copy =
                    m_folder.filePath(QStringLiteral("%1/%2.dcm").arg(name).arg(pairs.size()));
                pairs.append({sharedData() + QLatin1Char('/') + truth.path, copy, {}});
            }
        }
        QtConcurrent::blockingMap(pairs, [this, &options](Pair &pair) {
            pair.result =
                Deidentifier(options, Pseudonyms(key))
                    .run(QFile::encodeName(pair.original), QFile::encodeName(pair.copy), m_cancelled);
        });
        const auto isRefused = [](const Pair &pair) {
            return pair.result.problem != DeidentifyProblem::None;
        };
        pairs.erase(std::remove_if(pairs.begin(), pairs.end(), isRefused), pairs.end());
        return pairs;
    }

    /// What another reader has to say against copies.
    QByteArray faultsOf(const QVector<Pair> &pairs, const QStringList &arguments)
    {
        QByteArray list;
        for (const Pair &pair : pairs) {
            list += QFile::encodeName(pair.original) + '\t' + QFile::encodeName(pair.copy) + '\n';
        }
        const QString listPath = m_folder.filePath(QStringLiteral("list"));
        writeFile(listPath, list);
        constexpr int mostShown = 2000;
        return runTool(QLatin1String(systemPython),
            QStringList({QStringLiteral("-W"), QStringLiteral("ignore"),
                QStringLiteral(PM_SOURCE_DIR "/tests/platform/imagebase/checkdeidentified.py"),
                QStringLiteral(PM_SOURCE_DIR "/platform/imagebase/deidentify/profile.tsv"), listPath})
                + arguments)
            .output.left(mostShown);
    }

    QTemporaryDir m_folder;
    QVector<Pair> m_pairs;
    std::atomic<bool> m_cancelled{false};
};

PM_TEST_MAIN(DeidentifiedCorpusTest)
#include "tst_deidentifiedcorpus.moc"
