#pragma once

#include "settingspage.h"

class QLineEdit;

/// The address of the cloud service, in the username.ini that the sign-in reads.
class CloudPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit CloudPage(QWidget *parent);

    void read() override;
    QString fault() const override;
    QStringList write() override;

private:
    QLineEdit *m_address;
};
