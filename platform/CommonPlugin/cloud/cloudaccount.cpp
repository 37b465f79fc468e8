#include "cloudaccount.h"

#include "cloudproxy.h"
#include "configlocation.h"
#include "inifile.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

enum LogType { CloudUser = 1, LocalUser = 2 };

constexpr char currentGroup[] = "currentusername";
constexpr char logTypeKey[] = "currentusername/logtype";
constexpr char cloudKey[] = "currentusername/cloud";
constexpr char passwordKey[] = "currentusername/cloudpassword";
constexpr char rememberKey[] = "currentusername/remberPwd";
constexpr char databaseKey[] = "currentusername/dbname";

constexpr char addressKey[] = "cloudservice/address";
constexpr char userKey[] = "cloudservice/user";
constexpr char plainKey[] = "cloudservice/plain";
constexpr char authoritiesKey[] = "cloudservice/authorities";

QVariant stored(const char *key)
{
    return QSettings(CloudAccount::file(), QSettings::IniFormat).value(QLatin1String(key));
}

/// A text that the INI format took for a list at its commas.
QString storedText(const char *key)
{
    return stored(key).toStringList().join(QLatin1Char(','));
}

bool write(std::initializer_list<std::pair<const char *, QVariant>> values)
{
    const QString file = CloudAccount::file();
    return std::all_of(values.begin(), values.end(), [&file](const auto &value) {
        return IniFile::setValue(file, QLatin1String(value.first), value.second);
    });
}

/// The group of who works now; a local user's is written anew, in the order that its readers know.
bool writeCurrent(LogType type, const QString &cloud, bool remembers)
{
    const QVariant database = storedText(databaseKey);
    if (type == LocalUser) {
        IniFile::removeGroup(CloudAccount::file(), QLatin1String(currentGroup));
    }
    return write({{logTypeKey, int(type)}, {cloudKey, cloud}, {passwordKey, QString()},
        {rememberKey, remembers}, {databaseKey, database}});
}

} // namespace

QString CloudAccount::file()
{
    return QDir::cleanPath(ConfigLocation::unchecked(QLatin1String(ConfigKey::userNameIni)));
}

CloudAccount CloudAccount::read()
{
    CloudAccount account;
    account.address = storedText(cloudKey);
    if (account.address.isEmpty()) {
        account.address = storedText(addressKey);
    }
    account.user = storedText(userKey);
    account.mayBePlain = stored(plainKey).toBool();
    account.remembers = stored(rememberKey).toBool();
    account.authorities = storedText(authoritiesKey);
    return account;
}

CloudAccount CloudAccount::lastSignedIn()
{
    CloudAccount account = read();
    const QString address = storedText(addressKey);
    account.address = address.isEmpty() ? account.address : address;
    return account;
}

bool CloudAccount::isCloudUser()
{
    return stored(logTypeKey).toInt() == CloudUser;
}

bool CloudAccount::writeSignedIn() const
{
    return writeCurrent(CloudUser, address, remembers)
        && write(
            {{addressKey, address}, {userKey, user}, {plainKey, mayBePlain}, {authoritiesKey, authorities}});
}

bool CloudAccount::writeLocal() const
{
    return writeCurrent(LocalUser, QString(), remembers);
}

bool CloudAccount::isAddressGood() const
{
    const QUrl url(address, QUrl::StrictMode);
    const bool isWeb = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    // A password in an address would be written with it.
    const bool isPlace = url.userInfo().isEmpty() && !url.hasQuery() && !url.hasFragment();
    return url.isValid() && isWeb && isPlace && !url.host().isEmpty();
}

WebService CloudAccount::service(const QString &password) const
{
    WebService service;
    service.address = QUrl(address, QUrl::StrictMode);
    service.mayBePlain = mayBePlain;
    if (!user.isEmpty()) {
        service.authorization = WebService::basic(user, password);
    } else if (!password.isEmpty()) {
        service.authorization = WebService::bearer(password.toUtf8());
    }
    if (!authorities.isEmpty()) {
        service.authorities = QSslCertificate::fromPath(authorities);
    }
    service.proxy = CloudProxy::read().proxyFor(service);
    return service;
}

QString CloudAccount::secretName() const
{
    return QUrl(address).toString(QUrl::RemoveUserInfo | QUrl::StripTrailingSlash) + QLatin1Char(' ') + user;
}
