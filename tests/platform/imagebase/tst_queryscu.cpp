#include "datatruth.h"
#include "dicomservers.h"
#include "queryscu.h"
#include "strangearchive.h"
#include "testmain.h"

#include <QtTest>

#include <future>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmnet/dimse.h>

using namespace std::chrono_literals;

namespace {

using Maker = std::unique_ptr<DicomServer> (*)();

std::unique_ptr<DicomServer> makeDcmqrscp()
{
    return DicomServer::dcmqrscp();
}

std::unique_ptr<DicomServer> makeOrthanc()
{
    return DicomServer::orthanc();
}

DicomNode nodeOf(const DicomServer &server)
{
    return {server.aeTitle(), DicomServer::host(), server.port()};
}

QueryRequest patientsCalled(const QString &name)
{
    return {RecordLevel::Study,
        {{QueryTag::patientName, name}, {QueryTag::patientId, {}}, {QueryTag::studyUid, {}}}, 1000};
}

std::unique_ptr<DcmDataset> study(int number)
{
    auto data = std::make_unique<DcmDataset>();
    data->putAndInsertString(
        DCM_StudyInstanceUID, QStringLiteral("1.2.%1").arg(number).toLatin1().constData());
    return data;
}

void answerTooMuch(const StrangeArchive::Query &query)
{
    query.answer(STATUS_Pending, study(1).get());
    const auto large = study(2);
    const QByteArray text(2'000'000, 'x');
    large->putAndInsertString(DCM_PatientComments, text.constData());
    query.answer(STATUS_Pending, large.get());
    query.answer(STATUS_Success, nullptr);
}

void answerWithoutEnd(const StrangeArchive::Query &query)
{
    for (int number = 0; query.answer(STATUS_Pending, study(number).get()); ++number) { }
}

void answerSomethingElse(const StrangeArchive::Query &query)
{
    query.answerAsEcho();
}

void leaveInTheMiddle(const StrangeArchive::Query &query)
{
    query.answer(STATUS_Pending, study(1).get());
    query.leave();
}

void refuse(const StrangeArchive::Query &query)
{
    query.answer(STATUS_FIND_Error_DataSetDoesNotMatchSOPClass, nullptr);
}

} // namespace

Q_DECLARE_METATYPE(StrangeArchive::Script)
Q_DECLARE_METATYPE(Maker)

/// Queries of real archives with real files, and of peers that are none.
class QueryScuTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (sharedData().isEmpty()) {
            QSKIP("The shared corpus is not there.");
        }
    }

    void namesComeAsTheyAre_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::addColumn<QString>("files");
        QTest::newRow("dcmqrscp") << &makeDcmqrscp << QStringLiteral("chr.*");
        // It knows sets without code extensions.
        QTest::newRow("orthanc") << &makeOrthanc << QStringLiteral("chr(Fren|Germ|Russ|X1)");
    }

    /// The character sets of the corpus, by what independent readers found.
    void namesComeAsTheyAre()
    {
        QFETCH(const Maker, make);
        QFETCH(const QString, files);
        const auto archive = make();
        const QRegularExpression wanted(QStringLiteral("^02-charsets/") + files);
        QMap<QString, QString> names; // by patient
        QStringList paths;
        for (const DataTruth &truth : readDataTruth()) {
            if (wanted.match(truth.path).hasMatch() && truth.verdict == QLatin1String("index")) {
                names.insert(truth.values[Attribute::PatientID], truth.values[Attribute::PatientName]);
                paths.append(sharedData() + QLatin1Char('/') + truth.path);
            }
        }
        QVERIFY(names.size() > 3);
        archive->fill(paths);
        QueryScu scu(nodeOf(*archive));
        const QueryResult all = scu.find(patientsCalled({}));
        QVERIFY(all.isGood());
        for (const QueryRecord &record : all.records) {
            const QString id = record[QueryTag::patientId];
            QCOMPARE(record[QueryTag::patientName], names.take(id));
        }
        QVERIFY2(names.isEmpty(), qPrintable(names.keys().join(' ')));
    }

    void aLimitIsTold_data() { archives(); }

    /// The archive is stopped at the limit, and the same association answers the next question.
    void aLimitIsTold()
    {
        QFETCH(const Maker, make);
        const auto archive = make();
        archive->fill({sharedData() + QStringLiteral("/02-charsets/chrFren.dcm"),
            sharedData() + QStringLiteral("/02-charsets/chrGerm.dcm"),
            sharedData() + QStringLiteral("/02-charsets/chrRuss.dcm")});
        QueryScu scu(nodeOf(*archive));
        QueryRequest request = patientsCalled({});
        request.limit = 2;
        const QueryResult some = scu.find(request);
        QVERIFY(some.isGood() && some.isCutOff);
        QCOMPARE(some.records.size(), 2);
        request.limit = 3;
        const QueryResult all = scu.find(request);
        QVERIFY(all.isGood() && !all.isCutOff);
        QCOMPARE(all.records.size(), 3);
    }

    void aSilentArchiveIsLeft()
    {
        const auto archive = DicomServer::dcmqrscp();
        QueryScu scu(nodeOf(*archive));
        QVERIFY(scu.find(patientsCalled({})).isGood());
        archive->suspend();
        auto asked = std::async(std::launch::async, [&scu] { return scu.find(patientsCalled({})); });
        scu.cancel();
        QCOMPARE(asked.wait_for(20s), std::future_status::ready);
        QCOMPARE(asked.get().failure.problem, NetworkProblem::Stopped);
        QCOMPARE(scu.find(patientsCalled({})).failure.problem, NetworkProblem::Stopped);

        QueryScu connecting(nodeOf(*archive)); // it is given half a minute for its association
        asked = std::async(std::launch::async, [&connecting] { return connecting.find(patientsCalled({})); });
        QCOMPARE(asked.wait_for(200ms), std::future_status::timeout);
        connecting.cancel();
        QCOMPARE(asked.wait_for(20s), std::future_status::ready);
        QCOMPARE(asked.get().failure.problem, NetworkProblem::Stopped);
    }

    void strangeAnswersEnd_data()
    {
        QTest::addColumn<StrangeArchive::Script>("script");
        QTest::addColumn<int>("problem");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("records");
        const auto row = [](const char *name, const StrangeArchive::Script &script, NetworkProblem problem,
                             int status, int records) {
            QTest::newRow(name) << script << int(problem) << status << records;
        };
        row("too large", &answerTooMuch, NetworkProblem::BadAnswer, 0, 1);
        row("without end", &answerWithoutEnd, NetworkProblem::None, 0, 10);
        row("another answer", &answerSomethingElse, NetworkProblem::BadAnswer, 0, 0);
        row("leaves", &leaveInTheMiddle, NetworkProblem::PeerAborted, 0, 1);
        row("refuses", &refuse, NetworkProblem::None, 0xa900, 0);
    }

    /// What came before is kept.
    void strangeAnswersEnd()
    {
        QFETCH(const StrangeArchive::Script, script);
        QFETCH(const int, problem);
        QFETCH(const int, status);
        QFETCH(const int, records);
        const quint16 port = freePort();
        const StrangeArchive archive(port, script);
        QueryResult result;
        {
            QueryScu scu({QStringLiteral("STRANGE"), DicomServer::host(), port});
            QueryRequest request = patientsCalled({});
            request.limit = 10;
            result = scu.find(request);
        }
        QCOMPARE(int(result.failure.problem), problem);
        QCOMPARE(int(result.status), status);
        QCOMPARE(result.records.size(), records);
        QCOMPARE(result.isCutOff, records == 10);
    }

private:
    static void archives()
    {
        QTest::addColumn<Maker>("make");
        QTest::newRow("dcmqrscp") << &makeDcmqrscp;
        QTest::newRow("orthanc") << &makeOrthanc;
    }
};

PM_TEST_MAIN(QueryScuTest)
#include "tst_queryscu.moc"
