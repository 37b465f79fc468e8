#include "httpline.h"
#include "oddservice.h"
#include "testauthority.h"
#include "testmain.h"
#include "tlsservice.h"

#include <QBuffer>
#include <QTcpSocket>
#include <QtTest>

namespace {

constexpr int mostMs = 10000;
constexpr qint64 mostBody = 1000;

/// One answer, fed in pieces and ended by the service.
HttpAnswerReader fed(const QByteArray &bytes, int piece)
{
    HttpAnswerReader reader(mostBody);
    for (int at = 0; at < bytes.size(); at += piece) {
        reader.feed(bytes.mid(at, piece));
    }
    return reader;
}

/// A body on a disk that fails.
class Unreadable : public QIODevice
{
public:
    Unreadable() { open(ReadOnly | Unbuffered); }
    bool isSequential() const override { return false; }
    qint64 size() const override { return 10; }

protected:
    qint64 readData(char * /*data*/, qint64 /*most*/) override { return -1; }
    qint64 writeData(const char * /*data*/, qint64 /*length*/) override { return -1; }
};

WebService serviceAt(const QString &address)
{
    WebService service;
    service.address = QUrl(address);
    service.proxy = QNetworkProxy::NoProxy;
    return service;
}

HttpAnswer answerOf(HttpLine &line, const WebService &service, QIODevice *body = nullptr)
{
    HttpAnswer answer;
    bool isThere = false;
    QObject context;
    QObject::connect(&line, &HttpLine::finished, &context, [&](const HttpAnswer &given) {
        answer = given;
        isThere = true;
    });
    line.send({body ? "POST" : "GET", service.at(QStringLiteral("studies")), {}, body, mostBody});
    return QTest::qWaitFor([&] { return isThere; }, mostMs) ? answer : HttpAnswer();
}

} // namespace

class HttpLineTest : public QObject
{
    Q_OBJECT

private slots:
    void answersSurviveEveryCut_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<bool>("isKept");
        const QByteArray head("HTTP/1.1 200 OK\r\n");
        QTest::newRow("by length") << head + "Content-Length: 5\r\n\r\nfive!" << QByteArray("five!") << true;
        QTest::newRow("in chunks") << head
                + "transfer-encoding: Chunked\r\n\r\n5;x=y\r\nfive!\r\n1\r\n \r\n0\r\nAfter: x\r\n\r\n"
                                   << QByteArray("five! ") << true;
        QTest::newRow("to the end") << head + "\r\nfive!" << QByteArray("five!") << false;
        QTest::newRow("after another")
            << "HTTP/1.1 100 Continue\r\n\r\n" + head + "Content-Length: 1\r\n\r\nx" << QByteArray("x")
            << true;
        QTest::newRow("the last one")
            << head + "Connection: close\r\nContent-Length: 1\r\n\r\nx" << QByteArray("x") << false;
        QTest::newRow("an old one") << QByteArray("HTTP/1.0 200 OK\nContent-Length: 1\n\nx")
                                    << QByteArray("x") << false;
        QTest::newRow("more than was asked") << head + "Content-Length: 1\r\n\r\nxHTTP/1.1 200 OK\r\n"
                                             << QByteArray("x") << false;
    }

    void answersSurviveEveryCut()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, body);
        QFETCH(const bool, isKept);
        for (const int piece : {1, 3, int(bytes.size())}) {
            HttpAnswerReader reader = fed(bytes, piece);
            const bool keepsAlive = reader.isComplete() && reader.keepsAlive();
            reader.endOfLine();
            QVERIFY(reader.isComplete());
            QCOMPARE(reader.status(), 200);
            QCOMPARE(reader.body(), body);
            QCOMPARE(keepsAlive, isKept);
        }
    }

    void hostileAnswersAreBroken_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray head("HTTP/1.1 200 OK\r\n");
        QTest::newRow("no HTTP") << QByteArray("SSH-2.0-other\r\n");
        QTest::newRow("endless head") << head + QByteArray(70 << 10, 'x');
        QTest::newRow("two lengths") << head + "Content-Length: 1\r\nContent-Length: 2\r\n\r\n";
        QTest::newRow("a length of nothing") << head + "Content-Length: -1\r\n\r\n";
        QTest::newRow("a chunk without a size") << head + "Transfer-Encoding: chunked\r\n\r\nfive!\r\n";
        QTest::newRow("a long chunk") << head + "Transfer-Encoding: chunked\r\n\r\nffffffff\r\n";
        QTest::newRow("a long body") << head + "Content-Length: 1001\r\n\r\n";
        QTest::newRow("an endless body") << head + "\r\n" + QByteArray(1001, 'x');
        QTest::newRow("a signed length") << head + "Content-Length: +5\r\n\r\n";
        QTest::newRow("a coded body") << head + "Content-Encoding: gzip\r\nContent-Length: 1\r\n\r\n";
        QTest::newRow("another coding") << head + "Transfer-Encoding: gzip, chunked\r\n\r\n";
    }

    void hostileAnswersAreBroken()
    {
        QFETCH(const QByteArray, bytes);
        QVERIFY(fed(bytes, 100).isBroken());
    }

    /// One connection carries what follows each other; one that the service has let go of meanwhile does not
    /// fail the request, and one that was never good is not tried again.
    void linesAreKeptAlive()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        QVector<QTcpSocket *> sockets;
        connect(&server, &QTcpServer::newConnection, &server, [&] {
            QTcpSocket *socket = server.nextPendingConnection();
            sockets.append(socket);
            connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                if (socket->readAll().contains("\r\n\r\n")) {
                    socket->write(httpAnswer("200 OK", "text/plain", "good"));
                }
            });
        });
        const WebService service =
            serviceAt(QStringLiteral("http://localhost:%1/web").arg(server.serverPort()));
        HttpLine line(service, mostMs);
        for (int time = 0; time < 2; ++time) {
            QCOMPARE(answerOf(line, service).body, QByteArray("good"));
        }
        QCOMPARE(sockets.size(), 1);

        sockets[0]->disconnect(); // it hangs up on the next request, and has not answered
        connect(sockets[0], &QTcpSocket::readyRead, sockets[0], &QTcpSocket::abort);
        QCOMPARE(answerOf(line, service).body, QByteArray("good"));
        QCOMPARE(sockets.size(), 2);

        server.disconnect();
        connect(&server, &QTcpServer::newConnection, &server, [&] { delete server.nextPendingConnection(); });
        HttpLine other(service, mostMs);
        QCOMPARE(answerOf(other, service).failure.problem, WebProblem::LineCut);
        server.close();
        QCOMPARE(answerOf(other, service).failure.problem, WebProblem::NoRoute);
    }

    /// A service that refuses a body before it has read it is heard, and a silent one is given up.
    void refusalsComeBeforeTheEnd()
    {
        QBuffer body;
        body.setData(QByteArray(64 << 20, 'x'));
        QVERIFY(body.open(QIODevice::ReadOnly));
        const OddService refusing(httpAnswer("401 No", "text/plain", "no"), OddService::After::Keep);
        const WebService service = serviceAt(refusing.address());
        HttpLine line(service, mostMs);
        const HttpAnswer answer = answerOf(line, service, &body);
        QCOMPARE(answer.failure.problem, WebProblem::Unauthorized);
        QCOMPARE(answer.body, QByteArray("no"));
        QVERIFY(!body.atEnd());

        const OddService silent(QByteArray(), OddService::After::Keep);
        const WebService hushed = serviceAt(silent.address());
        HttpLine impatient(hushed, 50);
        QCOMPARE(answerOf(impatient, hushed).failure.problem, WebProblem::TimedOut);
    }

    /// What ends at once ends the request that it was, and the line carries the next.
    void endsAreTold()
    {
        const OddService good(httpAnswer("200 OK", "text/plain", "good"), OddService::After::Keep);
        const WebService service = serviceAt(good.address());
        HttpLine line(service, mostMs);
        QCOMPARE(answerOf(line, service).body, QByteArray("good"));
        Unreadable body;
        QCOMPARE(answerOf(line, service, &body).failure.problem, WebProblem::FileUnreadable);
        QCOMPARE(answerOf(line, service).body, QByteArray("good"));
        connect(&line, &HttpLine::finished, &line, [&] { line.disconnect(); });
        line.send({"GET", service.at(QStringLiteral("studies")), {}, nullptr, mostBody});
        line.abort();
        QVERIFY(line.isIdle());
        QCOMPARE(answerOf(line, service).body, QByteArray("good"));
    }

    /// Bodies of any size arrive whole over TLS, on one connection; who is not trusted gets none.
    void bodiesGoOverTls()
    {
        const TestAuthority authority;
        const TlsService tls(
            authority.issue(QStringLiteral("good")), httpAnswer("200 OK", "text/plain", "good"));
        WebService service = serviceAt(tls.address());
        QBuffer body;
        body.setData(QByteArray(3 << 20, 'x') + "end");
        QVERIFY(body.open(QIODevice::ReadOnly));
        HttpLine stranger(service, mostMs);
        QCOMPARE(answerOf(stranger, service, &body).failure.problem, WebProblem::CertificateRefused);
        service.authorities = QSslCertificate::fromPath(authority.certificate());
        HttpLine line(service, mostMs);
        for (int time = 0; time < 2; ++time) {
            QCOMPARE(answerOf(line, service, &body).body, QByteArray("good"));
        }
        QCOMPARE(tls.bodies(), QByteArrayList({body.data(), body.data()}));

        const TlsService old(authority.issue(QStringLiteral("old"), -2), QByteArray());
        service.address = QUrl(old.address());
        HttpLine expired(service, mostMs);
        QCOMPARE(answerOf(expired, service, &body).failure.problem, WebProblem::CertificateRefused);
        QVERIFY(old.bodies().isEmpty());
    }

    /// To another place of the same server, once; another server gets nothing.
    void redirectionsStayAtTheServer()
    {
        const auto pointing = [](const QByteArray &to) {
            return "HTTP/1.1 307 There\r\nLocation: " + to + "\r\nContent-Length: 5\r\n\r\nthere";
        };
        const OddService moved([&](const QByteArray &request) {
            return request.contains("/there") ? httpAnswer("200 OK", "text/plain", "good")
                                              : pointing("/there");
        });
        const WebService service = serviceAt(moved.address());
        HttpLine line(service, mostMs);
        QBuffer body;
        body.setData("body");
        QVERIFY(body.open(QIODevice::ReadOnly));
        QCOMPARE(answerOf(line, service, &body).body, QByteArray("good"));
        QCOMPARE(moved.asked().count("\r\n\r\nbody"), 2);

        const OddService elsewhere(pointing(moved.address().toLatin1()));
        const WebService away = serviceAt(elsewhere.address());
        HttpLine led(away, mostMs);
        QCOMPARE(answerOf(led, away).failure.problem, WebProblem::NotDicomWeb);
        const OddService round(pointing("/web"));
        const WebService circle = serviceAt(round.address());
        HttpLine dizzy(circle, mostMs);
        QCOMPARE(answerOf(dizzy, circle).failure.problem, WebProblem::NotDicomWeb);
    }

    /// A proxy is asked for the whole address, and told who asks.
    void goesThroughAProxy()
    {
        const OddService proxy(httpAnswer("200 OK", "text/plain", "by proxy"));
        WebService service = serviceAt(QStringLiteral("http://archive.invalid/web"));
        service.proxy = QNetworkProxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"),
            proxy.serverPort(), QStringLiteral("ann"), QStringLiteral("pass"));
        HttpLine line(service, mostMs);
        QCOMPARE(answerOf(line, service).body, QByteArray("by proxy"));
        const QByteArray asked = proxy.asked();
        QVERIFY2(
            asked.startsWith("GET http://archive.invalid/web/studies HTTP/1.1\r\nHost: archive.invalid\r\n"),
            asked.constData());
        QVERIFY(asked.contains("Proxy-Authorization: " + WebService::basic("ann", "pass")));
    }
};

PM_TEST_MAIN(HttpLineTest)
#include "tst_httpline.moc"
