#pragma once

#include "cloudaccount.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

/// What is typed into a sign-in, and what belongs to what: it asks nobody. GUI thread.
class LoginFields : public QWidget
{
    Q_OBJECT

public:
    explicit LoginFields(QWidget *parent);

    void showAccount(const CloudAccount &account);
    CloudAccount account() const;
    bool isLocal() const;
    QString password() const;
    /// A password that nobody typed: it goes as soon as the account is changed, so that no other service or
    /// user gets it.
    void fillIn(const QString &password);
    void clearPassword();
    /// @param reason empty where passwords can be remembered
    void setRememberingRefused(const QString &reason);
    /// Shows how another authority can be trusted.
    void offerAuthority();
    /// Puts the cursor where something is missing.
    void focusFirstEmpty();
    bool isComplete() const;

signals:
    void changed();

private:
    void build();
    void buildModes(QVBoxLayout *layout);
    QWidget *buildPassword();
    QWidget *buildAuthority();
    void chooseAuthority();
    void setAuthority(const QString &file);
    void setFilledIn(bool isFilledIn);
    void accountEdited();
    void refresh();

    QRadioButton *m_cloud = nullptr;
    QRadioButton *m_local = nullptr;
    QLabel *m_localHint = nullptr;
    QWidget *m_cloudFields = nullptr;
    QLineEdit *m_address = nullptr;
    QLineEdit *m_user = nullptr;
    QLineEdit *m_password = nullptr;
    QCheckBox *m_remember = nullptr;
    QLabel *m_rememberHint = nullptr;
    QCheckBox *m_plain = nullptr;
    QLabel *m_plainHint = nullptr;
    QWidget *m_authorityRow = nullptr;
    QLabel *m_authorityName = nullptr;
    QPushButton *m_forgetAuthority = nullptr;
    QString m_authority;
    bool m_isFilledIn = false; ///< the password comes from the secret store
};
