#include "webservice.h"

#include <QHostAddress>

bool WebService::isLoopback() const
{
    const QString host = address.host();
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}

bool WebService::exposesCredentials() const
{
    return !authorization.isEmpty() && !mayBePlain && !isLoopback() && !isSecure();
}

QUrl WebService::at(const QString &resource) const
{
    QUrl url = address;
    const QString root = address.path();
    url.setPath(root + (root.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/")) + resource);
    return url;
}

int WebService::portOf(const QUrl &url)
{
    constexpr int plainPort = 80;
    constexpr int securePort = 443;
    return url.port(url.scheme() == QLatin1String("https") ? securePort : plainPort);
}

QSslConfiguration WebService::tls() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificates(authorities);
    return configuration;
}

QByteArray WebService::basic(const QString &user, const QString &password)
{
    return "Basic " + (user + QLatin1Char(':') + password).toUtf8().toBase64();
}

QByteArray WebService::bearer(const QByteArray &token)
{
    return "Bearer " + token;
}
