#include "desktopscheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>

namespace {

constexpr char service[] = "org.freedesktop.portal.Desktop";
constexpr char path[] = "/org/freedesktop/portal/desktop";
constexpr char interface[] = "org.freedesktop.portal.Settings";
constexpr char appearanceGroup[] = "org.freedesktop.appearance";
constexpr char schemeKey[] = "color-scheme";
constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

/// Asking where there is none could start one.
bool hasSessionBus()
{
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
        || QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus"));
}

/// The older answer of the portal is a variant within a variant.
QVariant unwrapped(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

DesktopScheme::DesktopScheme(QObject *parent)
    : QObject(parent)
{ }

void DesktopScheme::follow()
{
    if (!hasSessionBus()) {
        return;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(QLatin1String(service), QLatin1String(path), QLatin1String(interface),
        QStringLiteral("SettingChanged"), this, SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(
        QLatin1String(service), QLatin1String(path), QLatin1String(interface), QStringLiteral("Read"));
    question << QLatin1String(appearanceGroup) << QLatin1String(schemeKey);
    auto *answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (!reply.isError()) {
            take(reply.value().variant());
        }
        answer->deleteLater();
    });
}

void DesktopScheme::onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group == QLatin1String(appearanceGroup) && key == QLatin1String(schemeKey)) {
        take(value.variant());
    }
}

void DesktopScheme::take(const QVariant &value)
{
    const uint scheme = unwrapped(value).toUInt();
    std::optional<bool> isDark;
    if (scheme == preferDark || scheme == preferLight) {
        isDark = scheme == preferDark;
    }
    if (isDark != m_isDark) {
        m_isDark = isDark;
        emit changed();
    }
}
