#pragma once

#include "cloudaccount.h"

#include <QObject>

#include <functional>

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
    /// Somebody has signed in: the password is kept or not, as the account says. Only the last one is kept:
    /// that of the account before is forgotten.
    /// @param previous as CloudAccount::lastSignedIn() was until then
    void settle(const CloudAccount &account, const QString &password, const CloudAccount &previous);

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
    using Then = std::function<void(const QString &problem)>;

    void keep(CloudAccount account, const QString &password, const Then &then);
    void forget(const CloudAccount &account, const Then &then);

    int m_round = 0; ///< which begin() this is
};
