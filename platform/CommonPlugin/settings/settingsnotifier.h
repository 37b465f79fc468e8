#pragma once

#include "commonplugin_export.h"

#include <QObject>

/// Tells a host what the dialogs were asked for and only the host can do. One for the process; GUI thread.
class COMMONPLUGIN_EXPORT SettingsNotifier : public QObject
{
    Q_OBJECT

public:
    static SettingsNotifier *instance();

    /// Whether somebody opens other indexes while the program runs.
    bool canOpenIndex() const;

signals:
    /// AppearanceSettings has another theme.
    void themeChanged();
    /// AppearanceSettings has another language.
    void languageChanged();
    /// ReceiveSettings has other values.
    void receivingChanged();
    /// The user wants to work on another index; the file may be one to be made.
    void indexRequested(const QString &path);
};
