#include "cloudaccount.h"
#include "cloudsignin.h"
#include "configlocation.h"
#include "httpuploadfile.h"
#include "loginform.h"
#include "oddservice.h"
#include "secretstore.h"
#include "testfiles.h"
#include "testmain.h"
#include "windowparts.h"

#include <QCheckBox>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QProcess>
#include <QtTest>

#include <optional>

Q_DECLARE_METATYPE(SecretAnswer::Problem)

namespace {

using Problem = SecretAnswer::Problem;

constexpr char busVariable[] = "DBUS_SESSION_BUS_ADDRESS";
constexpr char secret[] = "marker-p@ss word";
constexpr char busSettings[] =
    "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
    "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
    "<busconfig><type>session</type><listen>unix:dir=%1</listen>"
    "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
    "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
    "</policy></busconfig>";

/// A session of the test's own, whose bus starts nobody by itself.
class Session
{
public:
    /// Before any part of Qt looks for a bus, as it looks once.
    Session()
    {
        QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
        qunsetenv(busVariable);
        const QString settings = m_folder.filePath(QStringLiteral("bus.xml"));
        writeFile(settings, QString::fromLatin1(busSettings).arg(m_folder.path()).toUtf8());
        m_bus.start(QStringLiteral("dbus-daemon"),
            {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                QStringLiteral("--config-file=") + settings});
        if (m_bus.waitForStarted() && m_bus.waitForReadyRead()) {
            m_address = m_bus.readAllStandardOutput().trimmed();
            qputenv(busVariable, m_address);
        }
    }
    ~Session()
    {
        m_bus.kill();
        m_bus.waitForFinished();
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    bool hasBus() const { return !m_address.isEmpty() && QDBusConnection::sessionBus().isConnected(); }
    const QByteArray &address() const { return m_address; }
    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
    QProcess m_bus;
    QByteArray m_address;
};

} // namespace

class SecretStoreTest : public QObject
{
    Q_OBJECT

public:
    explicit SecretStoreTest(const Session &session)
        : m_session(session)
    { }

private slots:
    void cleanupTestCase()
    {
        m_keyring.kill();
        m_keyring.waitForFinished();
    }

    void nothingIsKeptWithoutADesktop()
    {
        qunsetenv(busVariable);
        QCOMPARE(write(), Problem::NoBus);
        QCOMPARE(read().problem, Problem::NoBus);
        QVERIFY(!SecretStore::text(read()).isEmpty());
        qputenv(busVariable, m_session.address());
    }

    void nothingIsKeptWithoutAStore()
    {
        if (!m_session.hasBus()) {
            QSKIP("There is no dbus-daemon here");
        }
        QCOMPARE(write(), Problem::NoProvider);
        QVERIFY(
            filesBelow(m_session.folder(), {QStringLiteral("*.ini"), QStringLiteral("*.conf")}).isEmpty());
    }

    /// Who is remembered is signed in at the next start, and not any more once he has signed out.
    void aRememberedUserIsSignedIn()
    {
        if (!m_session.hasBus() || !startKeyring()) {
            QSKIP("There is no gnome-keyring here");
        }
        ConfigLocation::setBase(m_session.folder());
        const OddService service(httpAnswer("200 OK", "application/dicom+json", "[]"));
        CloudAccount account;
        account.address = service.address();
        account.user = QStringLiteral("ann");
        account.remembers = true;
        QVERIFY(account.writeSignedIn());
        QCOMPARE(signedIn(), WebProblem::NoSecret);
        QCOMPARE(write(account.secretName()), Problem::None);
        QCOMPARE(signedIn(), WebProblem::None);
        QVERIFY(service.asked().contains(WebService::basic(account.user, QLatin1String(secret))));
        QVERIFY(account.writeLocal());
        QCOMPARE(signedIn(), WebProblem::NoSecret);
        ConfigLocation::setBase({});
    }

    /// Nobody could take out of the store what another account left there.
    void onlyTheLastPasswordIsKept()
    {
        if (!m_session.hasBus() || !startKeyring()) {
            QSKIP("There is no gnome-keyring here");
        }
        ConfigLocation::setBase(m_session.folder());
        const OddService service(httpAnswer("200 OK", "application/dicom+json", "[]"));
        CloudAccount ann;
        ann.address = service.address();
        ann.user = QStringLiteral("ann");
        ann.remembers = true;
        CloudAccount bob = ann;
        bob.user = QStringLiteral("bob");
        QVERIFY(ann.writeSignedIn());
        QCOMPARE(write(ann.secretName()), Problem::None);
        const auto signIn = [](const QString &user, bool remembers) {
            LoginForm form;
            form.show();
            typeInto(&form, "user", user);
            typeInto(&form, "password", QLatin1String(secret));
            partOf<QCheckBox>(&form, "remember")->setChecked(remembers);
            clickPart(&form, "submit");
            QTRY_VERIFY_WITH_TIMEOUT(!form.isVisible(), 20000);
        };
        signIn(bob.user, true);
        QCOMPARE(read(ann.secretName()).problem, Problem::NotThere);
        QCOMPARE(read(bob.secretName()).secret, QLatin1String(secret));
        signIn(ann.user, false);
        QCOMPARE(read(bob.secretName()).problem, Problem::NotThere);
        QCOMPARE(read(ann.secretName()).problem, Problem::NotThere);
        HttpUploadFile::instance()->endSession();
        ConfigLocation::setBase({});
    }

    /// Whether there is one is found out by trying to start it.
    void aRealStoreWhereOneCanBeRun()
    {
        if (!m_session.hasBus() || !startKeyring()) {
            QSKIP("There is no gnome-keyring here");
        }
        QCOMPARE(read().problem, Problem::NotThere);
        QCOMPARE(write(), Problem::None);
        const SecretAnswer answer = read();
        QCOMPARE(answer.problem, Problem::None);
        QCOMPARE(answer.secret, QLatin1String(secret));
        QCOMPARE(remove(), Problem::None);
        QCOMPARE(remove(), Problem::None);
        QCOMPARE(read().problem, Problem::NotThere);
        lock();
        QCOMPARE(write(), Problem::Locked);
    }

private:
    SecretAnswer wait(const std::function<void(const SecretStore::Then &)> &ask)
    {
        std::optional<SecretAnswer> answer;
        ask([&answer](const SecretAnswer &given) { answer = given; });
        [&answer] { QTRY_VERIFY_WITH_TIMEOUT(answer, 20000); }();
        return answer.value_or(SecretAnswer());
    }
    SecretAnswer read() { return read(m_name); }
    SecretAnswer read(const QString &name)
    {
        return wait([this, &name](const auto &then) { SecretStore::read(name, this, then); });
    }
    Problem write() { return write(m_name); }
    Problem write(const QString &name)
    {
        return wait([this, &name](const auto &then) {
            SecretStore::write(name, QLatin1String(secret), this, then);
        }).problem;
    }
    /// What comes of a sign-in with what is remembered.
    static WebProblem signedIn()
    {
        WebProblem problem = WebProblem::None;
        CloudSignIn signIn;
        connect(&signIn, &CloudSignIn::failed, &signIn,
            [&problem](const WebFailure &failure) { problem = failure.problem; });
        signIn.startRemembered();
        [&signIn] { QTRY_VERIFY_WITH_TIMEOUT(!signIn.isRunning(), 20000); }();
        return problem;
    }
    Problem remove()
    {
        return wait([this](const auto &then) { SecretStore::remove(m_name, this, then); }).problem;
    }

    bool startKeyring()
    {
        if (m_keyring.state() == QProcess::Running) {
            return true;
        }
        m_keyring.setProcessChannelMode(QProcess::MergedChannels);
        m_keyring.start(QStringLiteral("gnome-keyring-daemon"),
            {QStringLiteral("--foreground"), QStringLiteral("--unlock"),
                QStringLiteral("--components=secrets")});
        if (!m_keyring.waitForStarted()) {
            return false;
        }
        m_keyring.write("login");
        m_keyring.closeWriteChannel();
        const auto isThere = [this] {
            return wait([this](const auto &then) { SecretStore::check(this, then); }).isGood();
        };
        [&isThere] { QTRY_VERIFY_WITH_TIMEOUT(isThere(), 10000); }();
        return isThere();
    }

    static void lock()
    {
        QDBusMessage question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.secrets"),
            QStringLiteral("/org/freedesktop/secrets"), QStringLiteral("org.freedesktop.Secret.Service"),
            QStringLiteral("Lock"));
        question << QVariant::fromValue(QList<QDBusObjectPath>{
            QDBusObjectPath(QStringLiteral("/org/freedesktop/secrets/collection/login"))});
        QCOMPARE(QDBusConnection::sessionBus().call(question).type(), QDBusMessage::ReplyMessage);
    }

    const QString m_name = QStringLiteral("https://archive.example.org/web ann");
    const Session &m_session;
    QProcess m_keyring;
};

int main(int argc, char **argv)
{
    const Session session;
    return runTests(argc, argv, [&session] { return std::make_unique<SecretStoreTest>(session); });
}

#include "tst_secretstore.moc"
