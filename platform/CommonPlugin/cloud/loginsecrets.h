#pragma once

#include "cloudaccount.h"

#include <QObject>

struct SecretAnswer;

/// What a sign-in has to do with the secret store: a remembered password comes from there, and one that is to
/// be remembered goes there. Answers to what was asked before the last begin() are dropped. GUI thread.
class LoginSecrets : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Somebody is about to sign in with this account.
    void begin(const CloudAccount &account);
    /// Somebody has signed in: the password is kept or forgotten, as the account says.
    void settle(const CloudAccount &account, const QString &password, bool wasRemembered);

signals:
    /// @param refusal why passwords cannot be remembered; empty where they can
    void checked(const QString &refusal);
    void found(const CloudAccount &account, const QString &password);
    /// @param why in a sentence
    void unreadable(const CloudAccount &account, const QString &why);
    /// The password is where it belongs. @param problem else, in sentences
    void settled(const QString &problem);

private:
    void read(const CloudAccount &account, int round);
    void keep(CloudAccount account, const QString &password);
    void forget(const CloudAccount &account);
    void tellSettled(int round, const QString &failure, const SecretAnswer &answer);

    int m_round = 0; ///< which begin() this is
};
