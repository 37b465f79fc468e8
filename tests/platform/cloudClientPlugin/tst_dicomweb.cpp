#include "dicomfilebuilder.h"
#include "multipartbody.h"
#include "objectsretrieve.h"
#include "oddservice.h"
#include "postgresserver.h"
#include "storerequest.h"
#include "studysearch.h"
#include "testmain.h"
#include "webclient.h"
#include "websession.h"

#include <QJsonArray>
#include <QtTest>

Q_DECLARE_METATYPE(WebProblem)

namespace {

constexpr int mostMs = 30000;

/// The parts that a reader finds, fed in pieces of a size.
struct Parts
{
    QByteArrayList bodies;
    QByteArrayList types;
    MultipartReader::State state = MultipartReader::State::Before;
};

Parts take(const QByteArray &contentType, const QByteArray &body, int piece)
{
    Parts parts;
    MultipartReader reader(contentType,
        {[&](const QByteArray &type) {
             parts.types.append(type);
             parts.bodies.append(QByteArray(""));
             return true;
         },
            [&](const char *data, qint64 length) {
                parts.bodies.last().append(data, static_cast<int>(length));
                return true;
            },
            [] { return true; }});
    for (int at = 0; at < body.size() && reader.feed(body.mid(at, piece)); at += piece) { }
    parts.state = reader.state();
    return parts;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template <typename Request>
WebFailure endOf(Request &request)
{
    WebFailure failure{WebProblem::TimedOut, QStringLiteral("the test's own patience"), 0};
    QSignalSpy ended(&request, &Request::finished);
    QObject::connect(&request, &Request::finished, &request, [&](const auto &end) {
        if constexpr (std::is_same_v<std::decay_t<decltype(end)>, StoreAnswer>) {
            failure = end.failure;
        } else {
            failure = end;
        }
    });
    ended.wait(mostMs);
    return failure;
}

} // namespace

class DicomWebTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<DicomServer> m_archive;

    StoredFile madeFile(int number, int patient = 1) const
    {
        const QString instance = QStringLiteral("1.2.3.%1.5.%2").arg(patient).arg(number);
        const QString path = m_folder.filePath(QStringLiteral("%1.dcm").arg(instance));
        DicomFileBuilder()
            .patient(QStringLiteral("P%1").arg(patient), QStringLiteral("Müller^Jörg %1").arg(patient))
            .uids(
                QStringLiteral("1.2.3.%1").arg(patient), QStringLiteral("1.2.3.%1.4").arg(patient), instance)
            .instanceNumber(number)
            .write(path);
        return {path, instance};
    }

    StoreAnswer store(WebClient &client, const QVector<StoredFile> &files) const
    {
        StoreRequest request(client, files);
        StoreAnswer answer;
        connect(
            &request, &StoreRequest::finished, &request, [&](const StoreAnswer &given) { answer = given; });
        endOf(request);
        return answer;
    }

    QStringList studiesOf(WebClient &client, const StudyQuestion &question) const
    {
        StudySearch search(client, QStringLiteral("studies"), question.query());
        QStringList uids;
        connect(&search, &StudySearch::found, &search, [&](const QVector<DicomJson> &found) {
            for (const DicomJson &study : found) {
                uids.append(study.text(DicomTag::studyUid));
            }
        });
        return endOf(search).isNone() ? uids : QStringList();
    }

private slots:
    void initTestCase()
    {
        qRegisterMetaType<StoreAnswer>();
        allowWarning(QStringLiteral("must only be called once")); // Qt's own, where a server cuts the line
        m_archive = WebArchive::start();
    }

    /// Whatever pieces a body comes in, and whatever its parts hold, they come out as they went in.
    void partsSurviveEveryCut()
    {
        const QByteArrayList contents{
            "one", "\r\n--", "ends with a line\r\n", QByteArray(1000, '\0'), "--x\r\n\r\n"};
        MultipartBody body("application/dicom");
        for (int number = 0; number < contents.size(); ++number) {
            QFile file(m_folder.filePath(QStringLiteral("part%1").arg(number)));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents[number]) > 0);
            file.close();
            QVERIFY(body.addFile(file.fileName()));
        }
        QVERIFY(!body.addFile(m_folder.filePath(QStringLiteral("missing"))));
        QVERIFY(body.open(QIODevice::ReadOnly));
        const QByteArray whole = body.readAll();
        QCOMPARE(qint64(whole.size()), body.size());
        QVERIFY(body.seek(5)); // as a request that is sent again does
        QCOMPARE(body.read(40), whole.mid(5, 40));

        for (const int piece : {1, 2, 3, 7, 64, int(whole.size())}) {
            const Parts parts = take(body.contentType(), whole, piece);
            QCOMPARE(parts.state, MultipartReader::State::Complete);
            QCOMPARE(parts.bodies, contents);
            QCOMPARE(parts.types, QByteArrayList(QVector<QByteArray>(5, "application/dicom").toList()));
        }
        QVERIFY(take(body.contentType(), whole.chopped(6), 100).state != MultipartReader::State::Complete);

        QVERIFY(QFile::resize(m_folder.filePath(QStringLiteral("part3")), 10));
        QVERIFY(body.seek(0));
        QVERIFY(body.readAll().size() < whole.size());
        QVERIFY(body.unreadableFile().endsWith(QLatin1String("part3")));
    }

    void hostileBodiesBreakTheReader_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("body");
        const QByteArray good("multipart/related; type=\"application/dicom\"; boundary=\"b;1\"");
        QTest::newRow("no boundary") << QByteArray("multipart/related") << QByteArray("--\r\n\r\nx\r\n----");
        QTest::newRow("another type") << QByteArray("text/html; boundary=b") << QByteArray("--b--");
        QTest::newRow("endless head") << good << QByteArray("--b;1\r\n") + QByteArray(1 << 20, 'x');
        QTest::newRow("no line after the boundary") << good << QByteArray("--b;1xyz\r\n\r\n--b;1--");
    }

    void hostileBodiesBreakTheReader()
    {
        QFETCH(const QByteArray, type);
        QFETCH(const QByteArray, body);
        QCOMPARE(take(type, body, 1000).state, MultipartReader::State::Broken);
    }

    void verdictsAreReadPerObject()
    {
        const QByteArray answer = R"({"00081198": {"vr": "SQ", "Value": [
              {"00081155": {"vr": "UI", "Value": ["1.1"]}, "00081197": {"vr": "US", "Value": [272]}}]},
            "00081199": {"vr": "SQ", "Value": [
              {"00081155": {"vr": "UI", "Value": ["1.2"]}},
              {"00081155": {"vr": "UI", "Value": ["1.3"]}, "00081196": {"vr": "US", "Value": ["45056"]}},
              {"nonsense": 5}, "text"]}})";
        bool isGood = false;
        const QHash<QString, StoreVerdict> verdicts = StoreRequest::verdictsOf(answer, &isGood);
        QVERIFY(isGood);
        QCOMPARE(verdicts.size(), 3);
        QCOMPARE(verdicts[QStringLiteral("1.1")].state, StoreVerdict::State::Refused);
        QCOMPARE(verdicts[QStringLiteral("1.1")].reason, 272);
        QCOMPARE(verdicts[QStringLiteral("1.2")].state, StoreVerdict::State::Stored);
        QCOMPARE(verdicts[QStringLiteral("1.3")].state, StoreVerdict::State::StoredWithWarning);
        StoreRequest::verdictsOf("<html>", &isGood);
        QVERIFY(!isGood);
    }

    /// What was stored is found, and comes back byte for byte; a file that is none is told apart from the
    /// others.
    void objectsGoThereAndBack_data()
    {
        QTest::addColumn<bool>("inDatabase");
        QTest::newRow("an archive with SQLite") << false;
        QTest::newRow("an archive with PostgreSQL") << true;
    }

    void objectsGoThereAndBack()
    {
        QFETCH(const bool, inDatabase);
        const auto database = inDatabase ? std::make_unique<PostgresServer>() : nullptr;
        const auto own = inDatabase ? WebArchive::start({}, database.get()) : nullptr;
        WebClient client(webServiceAt(WebArchive::address(inDatabase ? *own : *m_archive)));
        QVector<StoredFile> files;
        for (int number = 1; number <= 20; ++number) {
            files.append(madeFile(number));
        }
        const QString nonsense = m_folder.filePath(QStringLiteral("nonsense.dcm"));
        QFile file(nonsense);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no image") > 0);
        file.close();
        files.insert(7, {nonsense, QStringLiteral("1.2.3.4.5.6")});
        const StoreAnswer answer = store(client, files);
        QCOMPARE(answer.verdicts.size(), 21);
        for (int at = 0; at < files.size(); ++at) {
            QCOMPARE(answer.verdicts[at].isStored(), at != 7);
        }

        StudyQuestion question;
        question.patientName = QStringLiteral("Jörg");
        StudySearch search(client, QStringLiteral("studies"), question.query());
        QVector<DicomJson> studies;
        connect(&search, &StudySearch::found, &search,
            [&](const QVector<DicomJson> &found) { studies += found; });
        QVERIFY(endOf(search).isNone());
        QCOMPARE(studies.size(), 1);
        QVERIFY(question.matches(studies[0]));
        question.patientName =
            QStringLiteral("Jürg"); // the same to a service that is asked for any character
        QVERIFY(!question.matches(studies[0]));
        QCOMPARE(studies[0].text(DicomTag::patientName), QStringLiteral("Müller^Jörg 1"));
        QCOMPARE(studies[0].number(DicomTag::imagesInStudy), 20);

        QTemporaryDir target;
        ObjectsRetrieve retrieve(client, QStringLiteral("studies/1.2.3.1"), target.path());
        QStringList received;
        connect(&retrieve, &ObjectsRetrieve::received, &retrieve,
            [&](const QString &path) { received.append(path); });
        QVERIFY(endOf(retrieve).isNone());
        QCOMPARE(received.size(), 20);
        QSet<QByteArray> sent;
        for (const StoredFile &one : files) {
            sent.insert(contentOf(one.path));
        }
        for (const QString &path : received) {
            QVERIFY(sent.contains(contentOf(path)));
        }
        QCOMPARE(QDir(target.path()).entryList(QDir::Files).size(), 20);
    }

    /// What a service was asked for by wildcards, and has found, is not dropped here.
    void namesThatWereAskedFor()
    {
        const auto matches = [](const QString &wanted, const QString &name) {
            const DicomJson study(QJsonObject{{DicomTag::name(DicomTag::patientName),
                QJsonObject{{QStringLiteral("vr"), QStringLiteral("PN")},
                    {QStringLiteral("Value"),
                        QJsonArray{QJsonObject{{QStringLiteral("Alphabetic"), name}}}}}}});
            StudyQuestion question;
            question.patientName = wanted;
            return question.matches(study);
        };
        QVERIFY(matches(QStringLiteral("smith"), QStringLiteral("B/O^SMITH")));
        QVERIFY(matches(QStringLiteral("doe john"), QStringLiteral("DOE^JOHN")));
        QVERIFY(matches(QStringLiteral("doe, jo"), QStringLiteral("DOE^JOHN^X")));
        QVERIFY(matches(QStringLiteral("d?e*n"), QStringLiteral("DOE^JOHN")));
        QVERIFY(matches(QStringLiteral("muller"), QStringLiteral("Müller^Jörg")));
        QVERIFY(matches(QStringLiteral("山田太郎"), QStringLiteral("山田^太郎")));
        QVERIFY(!matches(QStringLiteral("山田"), QStringLiteral("DOE^JOHN")));
        QVERIFY(!matches(QStringLiteral("[a-z]"), QStringLiteral("DOE^JOHN")));
    }

    /// More answers than one page has, none twice.
    void searchesGoOverPages()
    {
        WebClient client(webServiceAt(WebArchive::address(*m_archive)));
        QVector<StoredFile> files;
        constexpr int patients = 130;
        for (int patient = 100; patient < 100 + patients; ++patient) {
            files.append(madeFile(1, patient));
        }
        QVERIFY(store(client, files).failure.isNone());
        StudyQuestion question;
        question.patientId = QStringLiteral("P1??");
        QCOMPARE(studiesOf(client, question).size(), 100);
        question.patientId.clear();
        question.patientName = QStringLiteral("ller");
        QStringList uids = studiesOf(client, question);
        QVERIFY(uids.size() >= patients);
        QCOMPARE(uids.removeDuplicates(), 0);
    }

    /// A service may give fewer answers at a time than it was asked for.
    void shortPagesAreNotTheEnd()
    {
        static constexpr int page = 10;
        static constexpr int there = 25;
        const OddService odd([](const QByteArray &request) {
            const QUrl asked(QString::fromLatin1(request.split(' ').value(1)));
            const int first = QUrlQuery(asked).queryItemValue(QStringLiteral("offset")).toInt();
            QByteArrayList studies;
            for (int number = first; number < qMin(first + page, there); ++number) {
                studies.append(
                    R"({"0020000D": {"vr": "UI", "Value": ["1.2.)" + QByteArray::number(number) + R"("]}})");
            }
            return httpAnswer("200 OK", "application/dicom+json", '[' + studies.join(',') + ']');
        });
        WebClient client(webServiceAt(odd.address()));
        QStringList uids = studiesOf(client, {});
        QCOMPARE(uids.size(), there);
        QCOMPARE(uids.removeDuplicates(), 0);
    }

    void problemsHaveTheirOwnNames_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<WebProblem>("problem");
        const QByteArray html = httpAnswer("200 OK", "text/html", "<html>Welcome</html>");
        QTest::newRow("a web page") << html << WebProblem::BadAnswer;
        QTest::newRow("elsewhere") << QByteArray(
            "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.2:1/\r\nContent-Length: 0\r\n\r\n")
                                   << WebProblem::NotDicomWeb;
        QTest::newRow("401") << httpAnswer("401 Unauthorized", "text/plain", "no")
                             << WebProblem::Unauthorized;
        QTest::newRow("407") << httpAnswer("407 Proxy", "text/plain", "no") << WebProblem::NoRoute;
        QTest::newRow("429") << httpAnswer("429 Slowly", "text/plain", "no") << WebProblem::Busy;
        QTest::newRow("409") << httpAnswer("409 Conflict", "text/plain", "no") << WebProblem::Conflict;
        QTest::newRow("500") << httpAnswer("500 Oops", "text/plain", "no") << WebProblem::ServerError;
        QTest::newRow("cut") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n[{")
                             << WebProblem::LineCut;
        QTest::newRow("no HTTP") << QByteArray("220 mail ready\r\n") << WebProblem::LineCut;
        QTest::newRow("silence") << QByteArray() << WebProblem::TimedOut;
    }

    void problemsHaveTheirOwnNames()
    {
        QFETCH(const QByteArray, answer);
        QFETCH(const WebProblem, problem);
        const OddService odd(answer);
        WebClient client(webServiceAt(odd.address()));
        client.setPatience(500);
        StudySearch search(client, QStringLiteral("studies"), StudyQuestion().query());
        const WebFailure failure = endOf(search);
        QCOMPARE(failure.problem, problem);
        QVERIFY(!failure.detail.contains(QLatin1String(WebArchive::password)));

        QTemporaryDir target;
        ObjectsRetrieve retrieve(client, QStringLiteral("studies/1.2"), target.path());
        QVERIFY(!endOf(retrieve).isNone());
        QVERIFY(!store(client, {madeFile(1)}).failure.isNone());
    }

    /// An answer that is cut in the middle of an object leaves the objects before it, and no half one.
    void halfAnObjectIsNotKept()
    {
        const QByteArray part = "--b\r\nContent-Type: application/dicom\r\n\r\n";
        const QByteArray body = part + "whole\r\n" + part + "only ha";
        const OddService odd("HTTP/1.1 200 OK\r\nContent-Type: multipart/related; boundary=b\r\n"
                             "Content-Length: 5000\r\n\r\n"
            + body);
        WebClient client(webServiceAt(odd.address()));
        QTemporaryDir target;
        ObjectsRetrieve retrieve(client, QStringLiteral("studies/1.2"), target.path());
        QStringList received;
        connect(&retrieve, &ObjectsRetrieve::received, &retrieve,
            [&](const QString &path) { received.append(path); });
        QCOMPARE(endOf(retrieve).problem, WebProblem::LineCut);
        QCOMPARE(received.size(), 1);
        QCOMPARE(contentOf(received.value(0)), QByteArray("whole"));
        QCOMPARE(QDir(target.path()).entryList(QDir::Files).size(), 1);
    }

    /// Neither a long refusal nor an answer without end is read until it ends.
    void longAnswersAreGivenUp()
    {
        const OddService refusing(httpAnswer("500 Oops", "text/plain", QByteArray(6 << 20, 'x')));
        WebClient client(webServiceAt(refusing.address()));
        QTemporaryDir target;
        ObjectsRetrieve retrieve(client, QStringLiteral("studies/1.2"), target.path());
        QCOMPARE(endOf(retrieve).problem, WebProblem::ServerError);

        const OddService endless(
            "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(40 << 20, '['), OddService::After::Keep);
        WebClient patient(webServiceAt(endless.address()));
        StudySearch search(patient, QStringLiteral("studies"), StudyQuestion().query());
        QCOMPARE(endOf(search).problem, WebProblem::BadAnswer);
    }

    void credentialsStayWhereTheyBelong()
    {
        WebClient wrong(webServiceAt(WebArchive::address(*m_archive), "wrong"));
        StudySearch search(wrong, QStringLiteral("studies"), StudyQuestion().query());
        QCOMPARE(endOf(search).problem, WebProblem::Unauthorized);

        WebService far = webServiceAt(QStringLiteral("http://192.0.2.1/dicom-web"));
        QCOMPARE(WebClient(far).refusal().problem, WebProblem::PlainRefused);
        far.mayBePlain = true;
        QVERIFY(WebClient(far).refusal().isNone());
        far.address = QUrl(QStringLiteral("https://192.0.2.1/dicom-web"));
        far.mayBePlain = false;
        QVERIFY(WebClient(far).refusal().isNone());
        far.address = QUrl(QStringLiteral("ftp://192.0.2.1/"));
        QCOMPARE(WebClient(far).refusal().problem, WebProblem::NotDicomWeb);

        // Nobody else gets them, wherever he points.
        const OddService other(httpAnswer("200 OK", "application/dicom+json", "[]"));
        const OddService pointing("HTTP/1.1 307 There\r\nLocation: " + other.address().toLatin1()
            + "\r\nContent-Length: 0\r\n\r\n");
        WebClient client(webServiceAt(pointing.address()));
        StudySearch led(client, QStringLiteral("studies"), StudyQuestion().query());
        QCOMPARE(endOf(led).problem, WebProblem::NotDicomWeb);
        QVERIFY(pointing.asked().contains("Authorization"));
        QVERIFY(other.asked().isEmpty());
    }

    /// A plain service that is taken for a secure one has no certificate that could be refused.
    void noTlsIsToldAsSuch()
    {
        WebClient client(webServiceAt(
            WebArchive::address(*m_archive).replace(QLatin1String("http:"), QLatin1String("https:"))));
        StudySearch search(client, QStringLiteral("studies"), StudyQuestion().query());
        QCOMPARE(endOf(search).problem, WebProblem::NoTls);
        QCOMPARE(store(client, {madeFile(1)}).failure.problem, WebProblem::NoTls);
    }
};

PM_TEST_MAIN(DicomWebTest)
#include "tst_dicomweb.moc"
