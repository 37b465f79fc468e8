#include "datatruth.h"
#include "dicomfilebuilder.h"
#include "dicomreader.h"
#include "dicomservers.h"
#include "receiver.h"
#include "scuassociation.h"
#include "spoolfile.h"
#include "testfiles.h"
#include "testmain.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QtEndian>
#include <QtTest>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

QString text(const char *latin1)
{
    return QLatin1String(latin1);
}

/// What follows the file meta information.
QByteArray dataSetOf(const QString &path)
{
    constexpr int groupLengthAt = 140;
    const QByteArray bytes = bytesOf(path);
    return bytes.size() < groupLengthAt + 4
        ? QByteArray()
        : bytes.mid(groupLengthAt + 4 + int(qFromLittleEndian<quint32>(bytes.constData() + groupLengthAt)));
}

QSet<QByteArray> dataSets(const QStringList &files)
{
    QSet<QByteArray> hashes;
    for (const QString &file : files) {
        hashes.insert(QCryptographicHash::hash(dataSetOf(file), QCryptographicHash::Sha256));
    }
    return hashes;
}

ToolRun send(const QString &port, const QStringList &options, const QStringList &paths,
    const QString &calling = QStringLiteral("SENDER"), const char *called = Receiver::aeTitle)
{
    return runTool(text("storescu"),
        QStringList{text("-aet"), calling, text("-aec"), text(called)} + options
            + QStringList{text("127.0.0.1"), port} + paths);
}

/// A request as no decent program would make it.
struct OddRequest
{
    QByteArray sopClass = UID_CTImageStorage;
    QByteArray instance;
};

int statusOf(const Receiver &receiver, const QString &file, const OddRequest &odd)
{
    ScuAssociation association({text(Receiver::aeTitle), text("127.0.0.1"), receiver.scp->port()}, {});
    if (!association.open({{UID_CTImageStorage, {UID_LittleEndianExplicitTransferSyntax}}}).isNone()) {
        return -1;
    }
    T_DIMSE_C_StoreRQ request = {};
    request.MessageID = 1;
    request.DataSetType = DIMSE_DATASET_PRESENT;
    qstrncpy(request.AffectedSOPClassUID, odd.sopClass.constData(), sizeof(DIC_UI));
    qstrncpy(request.AffectedSOPInstanceUID, odd.instance.constData(), sizeof(DIC_UI));
    T_DIMSE_C_StoreRSP response = {};
    DcmDataset *detail = nullptr;
    const OFCondition result =
        DIMSE_storeUser(association.native(), 1, &request, QFile::encodeName(file).constData(), nullptr,
            nullptr, nullptr, DIMSE_BLOCKING, 0, &response, &detail);
    delete detail;
    return result.good() ? response.DimseStatus : -1;
}

} // namespace

class StoreScpTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void letsInWhomItKnows()
    {
        const Receiver receiver({text("FRIEND"), text("OTHER")});
        const auto echo = [&](const char *calling, const char *called) {
            return runTool(text("echoscu"),
                {text("-aet"), text(calling), text("-aec"), text(called), text("127.0.0.1"), receiver.port()})
                .exitCode;
        };
        QCOMPARE(echo("FRIEND", Receiver::aeTitle), 0);
        QVERIFY(echo("STRANGER", Receiver::aeTitle) != 0);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::UnknownCaller));
        QVERIFY(echo("FRIEND", "ELSE") != 0);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::WrongCalledTitle));
        QTRY_COMPARE(bytesOf(receiver.journal.file()).count('\n'), 2);
    }

    // The same program sends the same files to a server that keeps the bits, and to us.
    void takesTheWholeCorpusAsItWasSent()
    {
        QStringList files;
        for (const DataTruth &truth : readDataTruth()) {
            if (truth.verdict == QLatin1String("index")) {
                files.append(sharedData() + QLatin1Char('/') + truth.path);
            }
        }
        if (files.isEmpty()) {
            QSKIP("the shared corpus is not here");
        }
        const Receiver receiver;
        const auto reference = DicomServer::storescp({text("+B"), text("+uf"), text("+xa")});
        // Its own list of offers differs with the transfer syntax that it prefers.
        for (const char *syntax : {"-xe", "-xb", "-xs", "-xy", "-xv", "-xt", "-xr", "-xd"}) {
            const QStringList options{text("-nh"), text("-R"), text(syntax)};
            send(QString::number(reference->port()), options, files, text("SENDER"),
                reference->aeTitle().toLatin1().constData());
            send(receiver.port(), options, files);
        }
        QTRY_VERIFY_WITH_TIMEOUT(receiver.isIdle(), 60000);
        const QSet<QByteArray> ours = dataSets(receiver.stored() + receiver.spooled());
        int compared = 0;
        DicomReader reader;
        for (const QString &file : reference->files()) {
            const auto outcome = reader.read(QFile::encodeName(file)).outcome;
            if (outcome == DicomReadResult::Outcome::Image) {
                ++compared;
                QVERIFY2((dataSets({file}) - ours).isEmpty(), qPrintable(file));
            }
        }
        QVERIFY2(compared > 700, qPrintable(QString::number(compared)));
        QCOMPARE(receiver.records(), receiver.stored().size());
        const QString broken = receiver.index.query(text("PRAGMA integrity_check")).toString();
        QCOMPARE(broken, text("ok"));
    }

    void saysWhyNot()
    {
        Receiver receiver;
        const QString good = object(text("good.dcm"), text("1.2.3.4.5"));
        const QString homeless = m_folder->filePath(text("homeless.dcm"));
        DicomFileBuilder().without(0x0020000d).without(0x0020000e).write(homeless);
        QCOMPARE(statusOf(receiver, good, {UID_CTImageStorage, "1.2.3.4.6"}), 0xa900);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::OtherObject));
        QCOMPARE(statusOf(receiver, good, {UID_CTImageStorage, "../../etc/x"}), 0xc000);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::BadRequest));
        QCOMPARE(statusOf(receiver, good, {UID_MRImageStorage, "1.2.3.4.5"}), 0x0122);
        QCOMPARE(statusOf(receiver, homeless, {UID_CTImageStorage, "1.2.3.1.1.1"}), 0xc000);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::NotReadable));
        receiver.spool.setReserve(std::numeric_limits<qint64>::max() / 2);
        QCOMPARE(statusOf(receiver, good, {UID_CTImageStorage, "1.2.3.4.5"}), 0xa700);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::DiskFull));
        QTRY_COMPARE(receiver.counts().refused, 5);
        QCOMPARE(receiver.spooled(), QStringList());

        receiver.spool.setReserve(0);
        QCOMPARE(statusOf(receiver, good, {UID_CTImageStorage, "1.2.3.4.5"}), 0);
        QTRY_COMPARE(receiver.records(), 1);
        QCOMPARE(bytesOf(receiver.journal.file()).count('\n'), 5);
    }

    void followsThePolicyForOtherContent()
    {
        const Receiver receiver;
        const QString first = object(text("1.dcm"), text("1.2.3.4.1"), text("first"));
        const QString second = object(text("2.dcm"), text("1.2.3.4.1"), text("second"));
        QCOMPARE(send(receiver.port(), {}, {first, first, second}).exitCode, 0);
        QTRY_VERIFY(receiver.counts().received == 3 && receiver.isIdle());
        QTRY_COMPARE(receiver.counts().keptAside, 1);
        QCOMPARE(receiver.records(), 1);
        QVERIFY(dataSetOf(receiver.stored().value(0)).contains("first"));
        QCOMPARE(receiver.spooled().size(), 1);
        QVERIFY(dataSetOf(receiver.spooled().value(0)).contains("second"));

        receiver.indexer->setPolicy(DuplicatePolicy::TakeNew);
        QCOMPARE(send(receiver.port(), {}, {second}).exitCode, 0);
        QTRY_VERIFY(receiver.counts().received == 4 && receiver.isIdle());
        QCOMPARE(receiver.records(), 1);
        QCOMPARE(receiver.stored().size(), 1);
        QVERIFY(dataSetOf(receiver.stored().value(0)).contains("second"));
    }

    /// A file on a disk has the meta information of whoever wrote it.
    void knowsWhatWasImported()
    {
        const Receiver receiver;
        const QString file = object(text("a.dcm"), text("1.2.3.4.5"));
        QCOMPARE(receiver.index.import({file}, ImportMode::Copy).of(FileVerdict::New), qint64(1));
        QCOMPARE(send(receiver.port(), {}, {file}).exitCode, 0);
        QTRY_VERIFY(receiver.counts().received == 1 && receiver.isIdle());
        QCOMPARE(receiver.counts().keptAside, 0);
        QCOMPARE(receiver.stored().size(), 1);
        QCOMPARE(receiver.spooled(), QStringList());
    }

    void holdsUpNoOther()
    {
        const Receiver receiver;
        QCOMPARE(send(receiver.port(), {}, {object(text("a.dcm"), text("1.2.3.4.5"))}).exitCode, 0);
        QTRY_COMPARE(receiver.records(), 1);
        // A file lies where the folder of another study of this patient belongs.
        QDir folder = QFileInfo(receiver.stored().value(0)).dir();
        QVERIFY(folder.cdUp() && folder.cdUp());
        const QString obstacle = folder.filePath(text("1.2.9"));
        writeFile(obstacle);
        const QString other = m_folder->filePath(text("b.dcm"));
        DicomFileBuilder().uids(text("1.2.9"), text("1.2.9.1"), text("1.2.9.1.1")).write(other);
        QCOMPARE(
            send(receiver.port(), {},
                {object(text("c.dcm"), text("1.2.3.4.6")), other, object(text("d.dcm"), text("1.2.3.4.7"))})
                .exitCode,
            0);
        QTRY_COMPARE(receiver.records(), 3);
        QVERIFY(receiver.indexer->isStuck());
        QCOMPARE(receiver.indexer->waiting(), 1);
        QTRY_COMPARE(int(receiver.counts().lastProblem.problem), int(ReceiveProblem::IndexFailed));
        QCOMPARE(receiver.spooled().size(), 1);
        QVERIFY(QFile::remove(obstacle));
        QTRY_COMPARE_WITH_TIMEOUT(receiver.records(), 4, 30000);
        QTRY_VERIFY(receiver.isIdle() && !receiver.indexer->isStuck());
        QCOMPARE(receiver.spooled(), QStringList());
    }

    void indexesWhatAnEarlierProgramLeft()
    {
        Receiver living; // its objects are nobody else's, in the same folder
        int error = 0;
        const std::unique_ptr<SpoolFile> its = living.spool.create(&error);
        its->write("x", 1);
        {
            ObjectSpool earlier(living.index.path());
            QCOMPARE(earlier.open(), 0);
            for (int i = 0; i < 4; ++i) {
                const QByteArray bytes = bytesOf(object(text("a.dcm"), QStringLiteral("1.2.3.4.%1").arg(i)));
                const std::unique_ptr<SpoolFile> file = earlier.create(&error);
                file->write(bytes.constData(), std::size_t(bytes.size()));
                QCOMPARE(file->keep(), 0);
                if (i == 3) { // as a power cut may leave it
                    QVERIFY(QFile::resize(QFile::decodeName(file->keptPath()), bytes.size() - 1));
                }
            }
        }
        QCOMPARE(living.spooled().size(), 4);
        ObjectSpool next(living.index.path());
        QCOMPARE(next.open(), 0);
        ReceiveJournal journal{QString()};
        const SpoolIndexer indexer(living.index.path(), next, journal);
        QTRY_COMPARE(living.records(), 3);
        QTRY_COMPARE(living.spooled().size(), 1);
        QVERIFY(living.spooled().first().startsWith(next.asideFolder()));
        QVERIFY(QFile::exists(QFile::decodeName(its->path())));
    }

    void tellsOfABusyPort()
    {
        const Receiver receiver;
        ScpSettings settings = receiver.scp->settings();
        settings.port = receiver.scp->port();
        StoreScp second(settings, *receiver.provider);
        QCOMPARE(int(second.start().reason), int(ListenFailure::Reason::PortBusy));
        settings.bindAddress = text("192.0.2.1");
        StoreScp elsewhere(settings, *receiver.provider);
        QCOMPARE(int(elsewhere.start().reason), int(ListenFailure::Reason::BadAddress));
    }

private:
    QString object(const QString &name, const QString &uid, const QString &comment = QString()) const
    {
        const QString path = m_folder->filePath(name);
        DicomFileBuilder()
            .uids(QStringLiteral("1.2.3"), QStringLiteral("1.2.3.4"), uid)
            .set(0x00204000, comment)
            .write(path);
        return path;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

PM_TEST_MAIN(StoreScpTest)
#include "tst_storescp.moc"
