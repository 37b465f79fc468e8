#include "testauthority.h"

#include "dicomservers.h"
#include "testfiles.h"

#include <QDateTime>

namespace {

constexpr char settings[] = "[ca]\n"
                            "default_ca = own\n"
                            "[own]\n"
                            "database = %1/index\n"
                            "serial = %1/serial\n"
                            "new_certs_dir = %1\n"
                            "certificate = %1/authority.pem\n"
                            "private_key = %1/authority.key\n"
                            "default_md = sha256\n"
                            "policy = any\n"
                            "[any]\n"
                            "commonName = supplied\n"
                            "[server]\n"
                            "subjectAltName = IP:127.0.0.1,DNS:localhost\n"
                            "[req]\n"
                            "distinguished_name = subject\n"
                            "[subject]\n";

void openssl(const QStringList &arguments)
{
    const ToolRun run = runTool(QStringLiteral("openssl"), arguments);
    if (run.exitCode != 0) {
        qFatal("openssl: %s", run.output.constData());
    }
}

QString moment(const QDateTime &time)
{
    return time.toUTC().toString(QStringLiteral("yyMMddhhmmss")) + QLatin1Char('Z');
}

} // namespace

TestAuthority::TestAuthority()
{
    writeFile(path("settings"), QString::fromLatin1(settings).arg(m_folder.path()).toUtf8());
    writeFile(path("index"), QByteArray());
    writeFile(path("serial"), "01\n");
    openssl({QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
        QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"), QStringLiteral("30"),
        QStringLiteral("-subj"), QStringLiteral("/CN=Test Authority"), QStringLiteral("-keyout"),
        path("authority.key"), QStringLiteral("-out"), certificate()});
}

QString TestAuthority::issue(const QString &name, int days) const
{
    const QString key = path(name + QStringLiteral(".key"));
    const QString request = path(name + QStringLiteral(".req"));
    const QString issued = path(name + QStringLiteral(".crt"));
    openssl({QStringLiteral("req"), QStringLiteral("-newkey"), QStringLiteral("rsa:2048"),
        QStringLiteral("-nodes"), QStringLiteral("-subj"), QStringLiteral("/CN=") + name,
        QStringLiteral("-keyout"), key, QStringLiteral("-out"), request});
    const QDateTime end = QDateTime::currentDateTime().addDays(days < 0 ? days : days - 1);
    openssl({QStringLiteral("ca"), QStringLiteral("-batch"), QStringLiteral("-config"), path("settings"),
        QStringLiteral("-extensions"), QStringLiteral("server"), QStringLiteral("-startdate"),
        moment(end.addDays(-1 - qAbs(days))), QStringLiteral("-enddate"), moment(end), QStringLiteral("-in"),
        request, QStringLiteral("-out"), issued, QStringLiteral("-notext")});
    const QString both = path(name + QStringLiteral(".pem"));
    writeFile(both, bytesOf(issued) + bytesOf(key));
    return both;
}
