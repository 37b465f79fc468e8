#pragma once

#include <QDBusVariant>
#include <QObject>

#include <optional>

/**
 * Whether the desktop prefers dark colours: asked of the desktop portal of the session bus, without waiting,
 * and followed as it changes. Without a bus or a portal it never says anything. GUI thread.
 */
class DesktopScheme : public QObject
{
    Q_OBJECT

public:
    explicit DesktopScheme(QObject *parent = nullptr);

    /// Begins to ask and to follow; once.
    void follow();
    /// Nothing where the desktop has not said, or has no preference.
    std::optional<bool> isDark() const { return m_isDark; }

signals:
    void changed();

private slots:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void take(const QVariant &value);

    std::optional<bool> m_isDark;
};
