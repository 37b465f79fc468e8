#pragma once

#include "receivesettings.h"
#include "settingspage.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;

/// Whether and how this workstation takes images that others send.
class ReceivePage : public SettingsPage
{
    Q_OBJECT

public:
    explicit ReceivePage(QWidget *parent);

    void read() override;
    QString fault() const override;
    QStringList write() override;

private:
    void build();
    void enableFields();
    ReceiveSettings shown() const;
    ReceiveSettings judged() const;
    ReceiveSettings wanted() const;

    ReceiveSettings m_stored; ///< as they were read
    ReceiveSettings m_firstShown; ///< as the fields could show that
    QCheckBox *m_enabled = nullptr;
    QLineEdit *m_aeTitle = nullptr;
    QComboBox *m_address = nullptr;
    QSpinBox *m_port = nullptr;
    QLineEdit *m_callers = nullptr;
    QCheckBox *m_private = nullptr;
};
