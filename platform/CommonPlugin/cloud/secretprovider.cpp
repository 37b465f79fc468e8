#include "secretprovider.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <memory>

namespace {

constexpr char busName[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr char secretsName[] = "org.freedesktop.secrets";
constexpr char secretsPath[] = "/org/freedesktop/secrets";
constexpr int patienceMs = 5000;

/// Connecting where there is none could start one.
bool hasSessionBus()
{
    return (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS")
               || QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1String("/bus")))
        && QDBusConnection::sessionBus().isConnected();
}

using Answered = std::function<void(const QDBusMessage &answer)>;

void call(const QDBusMessage &question, QObject *context, const Answered &answered)
{
    auto *watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question, patienceMs), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, answered] {
        watcher->deleteLater();
        answered(watcher->reply());
    });
}

QDBusMessage toBus(const char *method)
{
    return QDBusMessage::createMethodCall(
        QLatin1String(busName), QLatin1String(busPath), QLatin1String(busName), QLatin1String(method));
}

bool namesProvider(const QDBusMessage &answer)
{
    const QStringList names = answer.arguments().value(0).toStringList();
    return std::any_of(names.begin(), names.end(), [](const QString &name) {
        return name == QLatin1String(secretsName) || name.startsWith(QLatin1String("org.kde.kwalletd"));
    });
}

void askLocked(const QString &collection, QObject *context, const std::function<void(bool)> &then)
{
    QDBusMessage question = QDBusMessage::createMethodCall(QLatin1String(secretsName), collection,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << QStringLiteral("org.freedesktop.Secret.Collection") << QStringLiteral("Locked");
    call(question, context, [then](const QDBusMessage &answer) {
        then(answer.arguments().value(0).value<QDBusVariant>().variant().toBool());
    });
}

} // namespace

void SecretProvider::find(QObject *context, const std::function<void(State)> &then)
{
    if (!hasSessionBus()) {
        QTimer::singleShot(0, context, [then] { then(State::NoBus); });
        return;
    }
    call(toBus("ListNames"), context, [context, then](const QDBusMessage &running) {
        if (namesProvider(running)) {
            then(State::There);
            return;
        }
        call(toBus("ListActivatableNames"), context, [then](const QDBusMessage &startable) {
            then(namesProvider(startable) ? State::There : State::None);
        });
    });
}

void SecretProvider::findLock(QObject *context, const std::function<void(bool isLocked)> &then)
{
    if (!hasSessionBus()) {
        QTimer::singleShot(0, context, [then] { then(false); });
        return;
    }
    QDBusMessage question =
        QDBusMessage::createMethodCall(QLatin1String(secretsName), QLatin1String(secretsPath),
            QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("ReadAlias"));
    question << QStringLiteral("default");
    call(question, context, [context, then](const QDBusMessage &answer) {
        const QString path = answer.arguments().value(0).value<QDBusObjectPath>().path();
        if (path.size() > 1) {
            askLocked(path, context, then);
        } else {
            then(path == QLatin1String("/"));
        }
    });
}
