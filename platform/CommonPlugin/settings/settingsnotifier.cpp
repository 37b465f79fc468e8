#include "settingsnotifier.h"

#include <QMetaMethod>

SettingsNotifier *SettingsNotifier::instance()
{
    static SettingsNotifier notifier;
    return &notifier;
}

bool SettingsNotifier::canOpenIndex() const
{
    return isSignalConnected(QMetaMethod::fromSignal(&SettingsNotifier::indexRequested));
}
