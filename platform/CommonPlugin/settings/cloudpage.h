#pragma once

#include "cloudproxy.h"
#include "settingspage.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

/// The address of the cloud service and the way to it, in the username.ini that the sign-in reads.
class CloudPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit CloudPage(QWidget *parent);

    void read() override;
    QString fault() const override;
    QStringList write() override;

private:
    void build();
    void enableProxy();
    CloudProxy proxy() const;

    QLineEdit *m_address = nullptr;
    QCheckBox *m_plain = nullptr;
    QComboBox *m_kind = nullptr;
    QLineEdit *m_host = nullptr;
    QSpinBox *m_port = nullptr;
};
