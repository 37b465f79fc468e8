#pragma once

#include "settingspage.h"

class QComboBox;

/// Theme and language of this user.
class AppearancePage : public SettingsPage
{
    Q_OBJECT

public:
    explicit AppearancePage(QWidget *parent);

    void read() override;
    QStringList write() override;

private:
    QComboBox *m_theme;
    QComboBox *m_language;
};
