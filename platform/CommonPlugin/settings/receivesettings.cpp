#include "receivesettings.h"

#include "configlocation.h"
#include "dicomnode.h"
#include "mainsetting.h"

#include <algorithm>

#include <arpa/inet.h>

namespace {

QString text(const char *key, const char *usual)
{
    const QString value = MainSetting::dicom(key).value().toStringList().join(QLatin1Char(',')).trimmed();
    return value.isEmpty() ? QLatin1String(usual) : value;
}

int number(const char *key, int usual)
{
    bool good = false;
    const int value = MainSetting::dicom(key).value().toInt(&good);
    return good ? value : usual;
}

QStringList titles(const QStringList &texts)
{
    QStringList result;
    for (const QString &part : texts.join(QLatin1Char(',')).split(QLatin1Char(','))) {
        if (!part.trimmed().isEmpty()) {
            result.append(part.trimmed());
        }
    }
    return result;
}

bool isAddress(const QString &address)
{
    in6_addr any = {};
    const QByteArray plain = address.toLatin1();
    return inet_pton(AF_INET, plain.constData(), &any) == 1
        || inet_pton(AF_INET6, plain.constData(), &any) == 1;
}

} // namespace

ReceiveSettings ReceiveSettings::read()
{
    ReceiveSettings settings;
    settings.enabled = number(ConfigKey::receive, 0) == 1;
    settings.aeTitle = ownAeTitle();
    settings.address = text(ConfigKey::receiveAddress, thisComputer);
    settings.port = number(ConfigKey::receivePort, usualPort);
    settings.callers = titles(MainSetting::dicom(ConfigKey::receiveCallers).value().toStringList());
    settings.acceptPrivateClasses = number(ConfigKey::receivePrivate, 0) == 1;
    settings.synced = number(ConfigKey::receiveSynced, 1) != 0;
    return settings;
}

QString ReceiveSettings::ownAeTitle()
{
    return text(ConfigKey::ownAeTitle, ConfigKey::usualAeTitle);
}

bool ReceiveSettings::write() const
{
    const ReceiveSettings now = read();
    const auto put = [](const char *key, const QVariant &value, bool differs) {
        return !differs || MainSetting::dicom(key).write(value);
    };
    bool good = put(ConfigKey::receive, enabled ? 1 : 0, enabled != now.enabled);
    good = put(ConfigKey::ownAeTitle, aeTitle, aeTitle != now.aeTitle) && good;
    good = put(ConfigKey::receiveAddress, address, address != now.address) && good;
    good = put(ConfigKey::receivePort, port, port != now.port) && good;
    good = put(ConfigKey::receiveCallers, callers, callers != now.callers) && good;
    good = put(ConfigKey::receivePrivate, acceptPrivateClasses ? 1 : 0,
               acceptPrivateClasses != now.acceptPrivateClasses)
        && good;
    return good;
}

QString ReceiveSettings::file()
{
    return MainSetting::dicom(ConfigKey::receive).file();
}

ReceiveSettings::Fault ReceiveSettings::fault() const
{
    if (!isAeTitle(aeTitle)) {
        return Fault::BadAeTitle;
    }
    if (!isAddress(address)) {
        return Fault::BadAddress;
    }
    if (port < 1 || port > highestPort) {
        return Fault::BadPort;
    }
    return std::all_of(callers.begin(), callers.end(), isAeTitle) ? Fault::None : Fault::BadCaller;
}

bool ReceiveSettings::operator==(const ReceiveSettings &other) const
{
    return enabled == other.enabled && aeTitle == other.aeTitle && address == other.address
        && port == other.port && callers == other.callers
        && acceptPrivateClasses == other.acceptPrivateClasses && synced == other.synced;
}
