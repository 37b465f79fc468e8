#include "cloudproxy.h"

#include "cloudaccount.h"
#include "inifile.h"
#include "webservice.h"

#include <QNetworkProxyFactory>
#include <QSettings>

namespace {

constexpr char kindKey[] = "cloudproxy/kind";
constexpr char hostKey[] = "cloudproxy/host";
constexpr char portKey[] = "cloudproxy/port";

/// As the file says them, by Kind.
const QStringList &kindNames()
{
    static const QStringList names{
        QStringLiteral("system"), QStringLiteral("none"), QStringLiteral("http"), QStringLiteral("socks5")};
    return names;
}

} // namespace

CloudProxy CloudProxy::read()
{
    const QSettings file(CloudAccount::file(), QSettings::IniFormat);
    CloudProxy proxy;
    const int kind = kindNames().indexOf(file.value(QLatin1String(kindKey)).toString());
    proxy.kind = kind < 0 ? Kind::System : Kind(kind);
    proxy.host = file.value(QLatin1String(hostKey)).toString();
    proxy.port = quint16(file.value(QLatin1String(portKey)).toUInt());
    return proxy;
}

bool CloudProxy::write() const
{
    const QString file = CloudAccount::file();
    return IniFile::setValue(file, QLatin1String(kindKey), kindNames()[int(kind)])
        && IniFile::setValue(file, QLatin1String(hostKey), host)
        && IniFile::setValue(file, QLatin1String(portKey), port);
}

QNetworkProxy CloudProxy::proxyFor(const WebService &service) const
{
    if (service.isLoopback() || kind == Kind::None) {
        return QNetworkProxy::NoProxy;
    }
    if (kind == Kind::System) {
        return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(service.address))
            .value(0, QNetworkProxy::NoProxy);
    }
    return {kind == Kind::Http ? QNetworkProxy::HttpProxy : QNetworkProxy::Socks5Proxy, host, port};
}
