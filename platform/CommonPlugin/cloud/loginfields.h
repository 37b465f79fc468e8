#pragma once

#include "cloudaccount.h"

#include <QWidget>

class AuthorityChoice;
class PasswordField;
class QCheckBox;
class QLabel;
class QLineEdit;
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
    void accountEdited();
    void refresh();

    QRadioButton *m_cloud = nullptr;
    QRadioButton *m_local = nullptr;
    QLabel *m_localHint = nullptr;
    QWidget *m_cloudFields = nullptr;
    QLineEdit *m_address = nullptr;
    QLineEdit *m_user = nullptr;
    PasswordField *m_password = nullptr;
    QCheckBox *m_remember = nullptr;
    QLabel *m_rememberHint = nullptr;
    QCheckBox *m_plain = nullptr;
    QLabel *m_plainHint = nullptr;
    AuthorityChoice *m_authority = nullptr;
};
