#include "secretstore.h"
#include "testfiles.h"
#include "testmain.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QProcess>
#include <QtTest>

#include <optional>

Q_DECLARE_METATYPE(SecretAnswer::Problem)

namespace {

using Problem = SecretAnswer::Problem;

constexpr char secret[] = "marker-p@ss word";
constexpr char busSettings[] =
    "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
    "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
    "<busconfig><type>session</type><listen>unix:dir=%1</listen>"
    "<policy context=\"default\"><allow send_destination=\"*\"/><allow own=\"*\"/>"
    "</policy></busconfig>";

} // namespace

/// In the order of its functions: a process connects to one session's bus in its life.
class SecretStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        QVERIFY(
            QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    void cleanupTestCase()
    {
        for (QProcess *process : {&m_keyring, &m_bus}) {
            process->kill();
            process->waitForFinished();
        }
    }

    void nothingIsKeptWithoutADesktop()
    {
        QCOMPARE(write(), Problem::NoBus);
        QCOMPARE(read().problem, Problem::NoBus);
        QVERIFY(!SecretStore::text(read()).isEmpty());
    }

    void nothingIsKeptWithoutAStore()
    {
        if (!startBus()) {
            QSKIP("There is no dbus-daemon here");
        }
        QCOMPARE(write(), Problem::NoProvider);
        QVERIFY(filesBelow(m_folder.path(), {QStringLiteral("*.ini"), QStringLiteral("*.conf")}).isEmpty());
    }

    /// Whether there is one is found out by trying to start it.
    void aRealStoreWhereOneCanBeRun()
    {
        if (m_bus.state() != QProcess::Running || !startKeyring()) {
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
    SecretAnswer read()
    {
        return wait([this](const auto &then) { SecretStore::read(m_name, this, then); });
    }
    Problem write()
    {
        return wait([this](const auto &then) {
            SecretStore::write(m_name, QLatin1String(secret), this, then);
        }).problem;
    }
    Problem remove()
    {
        return wait([this](const auto &then) { SecretStore::remove(m_name, this, then); }).problem;
    }

    /// A bus that can start nobody by itself.
    bool startBus()
    {
        const QString settings = m_folder.filePath(QStringLiteral("bus.xml"));
        writeFile(settings, QString::fromLatin1(busSettings).arg(m_folder.path()).toUtf8());
        m_bus.start(QStringLiteral("dbus-daemon"),
            {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                QStringLiteral("--config-file=") + settings});
        if (!m_bus.waitForStarted() || !m_bus.waitForReadyRead()) {
            return false;
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readAllStandardOutput().trimmed());
        return QDBusConnection::sessionBus().isConnected();
    }

    bool startKeyring()
    {
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
    QTemporaryDir m_folder;
    QProcess m_bus;
    QProcess m_keyring;
};

PM_TEST_MAIN(SecretStoreTest)
#include "tst_secretstore.moc"
