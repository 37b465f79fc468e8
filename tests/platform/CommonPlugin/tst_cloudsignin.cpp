#include "cloudsignin.h"
#include "configlocation.h"
#include "oddservice.h"
#include "testauthority.h"
#include "testfiles.h"
#include "testmain.h"
#include "tlsservice.h"
#include "webarchive.h"

#include <QtTest>

Q_DECLARE_METATYPE(WebProblem)

namespace {

constexpr int mostMs = 30000;

struct Outcome
{
    WebProblem problem = WebProblem::TimedOut;
    CloudSession session;
};

CloudAccount accountAt(const QString &address)
{
    CloudAccount account;
    account.address = address;
    account.user = QLatin1String(WebArchive::user);
    return account;
}

Outcome signIn(const CloudAccount &account, const char *password = WebArchive::password)
{
    Outcome outcome;
    CloudSignIn signIn;
    QObject::connect(&signIn, &CloudSignIn::signedIn, [&outcome](const CloudSession &session) {
        outcome = {WebProblem::None, session};
    });
    QObject::connect(&signIn, &CloudSignIn::failed,
        [&outcome](const WebFailure &failure) { outcome.problem = failure.problem; });
    signIn.start(account, QLatin1String(password));
    [&signIn] { QTRY_VERIFY_WITH_TIMEOUT(!signIn.isRunning(), mostMs); }();
    return outcome;
}

} // namespace

class CloudSignInTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_archive = WebArchive::start(); }
    void init() { ConfigLocation::setBase(m_folder.filePath(QStringLiteral("app/bin"))); }
    void cleanupTestCase() { ConfigLocation::setBase({}); }

    void sessionOfAnArchive()
    {
        const CloudAccount account = accountAt(WebArchive::address(*m_archive));
        const Outcome one = signIn(account);
        QCOMPARE(one.problem, WebProblem::None);
        QVERIFY(one.session.isOpen());
        QVERIFY(!one.session.id.contains(WebArchive::password));
        QVERIFY(signIn(account).session.id != one.session.id);
        QCOMPARE(signIn(account, "wrong").problem, WebProblem::Unauthorized);
    }

    void sessionThatTheServiceNames()
    {
        const OddService service("HTTP/1.1 200 OK\r\nContent-Type: application/dicom+json\r\n"
                                 "Set-Cookie: theme=dark\r\nSet-Cookie: JSESSIONID=abc123; Path=/\r\n"
                                 "Content-Length: 2\r\n\r\n[]");
        QCOMPARE(signIn(accountAt(service.address())).session.id, QByteArray("abc123"));
    }

    void tokenInPlaceOfAUser()
    {
        const OddService service(httpAnswer("204 No Content", "text/plain", {}));
        CloudAccount account = accountAt(service.address());
        account.user.clear();
        const Outcome outcome = signIn(account, "some-token");
        QCOMPARE(outcome.problem, WebProblem::None);
        QVERIFY(service.asked().contains("Authorization: Bearer some-token"));
        QVERIFY(!outcome.session.id.contains("some-token"));
    }

    void noDicomWebService_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<WebProblem>("problem");

        QTest::newRow("web page") << httpAnswer("200 OK", "text/html", "<html>Welcome</html>")
                                  << WebProblem::NotDicomWeb;
        QTest::newRow("nothing there")
            << httpAnswer("404 Not Found", "text/html", "no") << WebProblem::NotDicomWeb;
        QTest::newRow("no web server at all")
            << QByteArray("220 mail.example.org ESMTP\r\n") << WebProblem::LineCut;
        QTest::newRow("endless answer")
            << "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(3 << 20, '[') << WebProblem::NotDicomWeb;
        QTest::newRow("out of order")
            << httpAnswer("503 Busy", "text/plain", "later") << WebProblem::ServerError;
    }

    void noDicomWebService()
    {
        QFETCH(const QByteArray, answer);
        const OddService service(answer);
        QTEST(signIn(accountAt(service.address())).problem, "problem");
    }

    void nobodyThere()
    {
        const QString address = QStringLiteral("http://127.0.0.1:%1/web").arg(freePort());
        QCOMPARE(signIn(accountAt(address)).problem, WebProblem::NoRoute);
        QCOMPARE(signIn(accountAt(QStringLiteral("nonsense"))).problem, WebProblem::NotDicomWeb);
    }

    void plainBeyondThisComputer()
    {
        CloudAccount account = accountAt(QStringLiteral("http://192.0.2.7/web"));
        QCOMPARE(signIn(account).problem, WebProblem::PlainRefused);
        account.mayBePlain = true;
        QVERIFY(!account.service(QLatin1String(WebArchive::password)).exposesCredentials());
    }

    void certificates()
    {
        const TestAuthority authority;
        const QByteArray welcome = httpAnswer("200 OK", "application/dicom+json", "[]");
        const TlsService good(authority.issue(QStringLiteral("good")), welcome);
        CloudAccount account = accountAt(good.address());
        QCOMPARE(signIn(account).problem, WebProblem::CertificateRefused);
        account.authorities = authority.certificate();
        QCOMPARE(signIn(account).problem, WebProblem::None);

        const TlsService expired(authority.issue(QStringLiteral("expired"), -2), welcome);
        account.address = expired.address();
        QCOMPARE(signIn(account).problem, WebProblem::CertificateRefused);
        account.address =
            QString(good.address()).replace(QLatin1String("127.0.0.1"), QLatin1String("localhost"));
        QCOMPARE(signIn(account).problem, WebProblem::None);

        // A plain service has no certificate that could be refused: the archive is one.
        account.address =
            WebArchive::address(*m_archive).replace(QLatin1String("http:"), QLatin1String("https:"));
        QCOMPARE(signIn(account).problem, WebProblem::NoTls);
    }

    void cancelledWhileTheServiceIsSilent()
    {
        const OddService service(QByteArray(), OddService::After::Keep);
        CloudSignIn signIn;
        QSignalSpy failed(&signIn, &CloudSignIn::failed);
        signIn.start(accountAt(service.address()), QStringLiteral("x"));
        QTRY_VERIFY(!service.asked().isEmpty());
        signIn.cancel();
        QTRY_COMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].value<WebFailure>().problem, WebProblem::Stopped);
        QVERIFY(!signIn.isRunning());
    }

    void accountInItsFile()
    {
        const QString file = m_folder.filePath(QStringLiteral("app/config/username.ini"));
        writeFile(file, "; by hand\n[currentusername]\ncloudpassword=old\ndbname=mine\n[other]\nkey=1\n");
        CloudAccount account = accountAt(QStringLiteral("https://archive.example.org/a,b"));
        account.remembers = true;
        QVERIFY(account.writeSignedIn());
        QVERIFY(CloudAccount::isCloudUser());
        const QByteArray signedIn = bytesOf(file);
        QVERIFY(signedIn.startsWith("; by hand\n[currentusername]\ncloudpassword=\ndbname=mine\n"));
        QVERIFY(signedIn.contains("logtype=1\n") && signedIn.contains("remberPwd=true\n"));
        QVERIFY(account.writeLocal());
        QVERIFY(!CloudAccount::isCloudUser());
        QVERIFY(bytesOf(file).contains("logtype=2\n") && bytesOf(file).contains("\ncloud=\n"));
        const CloudAccount read = CloudAccount::read();
        QCOMPARE(read.address, account.address);
        QCOMPARE(read.user, account.user);
        QVERIFY(read.remembers);
    }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<DicomServer> m_archive;
};

PM_TEST_MAIN(CloudSignInTest)
#include "tst_cloudsignin.moc"
