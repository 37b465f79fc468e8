#include "loginsecrets.h"

#include "secretstore.h"

void LoginSecrets::begin(const CloudAccount &account)
{
    const int round = ++m_round;
    SecretStore::check(this, [this, account, round](const SecretAnswer &answer) {
        if (round != m_round) {
            return;
        }
        emit checked(SecretStore::text(answer));
        if (answer.isGood() && account.remembers) {
            read(account, round);
        }
    });
}

void LoginSecrets::read(const CloudAccount &account, int round)
{
    SecretStore::read(account.secretName(), this, [this, account, round](const SecretAnswer &answer) {
        if (round != m_round) {
            return;
        }
        if (answer.isGood()) {
            emit found(account, answer.secret);
        } else if (answer.problem != SecretAnswer::Problem::NotThere) {
            emit unreadable(account, SecretStore::text(answer));
        }
    });
}

void LoginSecrets::settle(const CloudAccount &account, const QString &password, bool wasRemembered)
{
    if (account.remembers) {
        keep(account, password);
    } else if (wasRemembered) {
        forget(account);
    } else {
        emit settled({});
    }
}

void LoginSecrets::keep(CloudAccount account, const QString &password)
{
    const QString name = account.secretName();
    const auto kept = [this, account = std::move(account), round = m_round](
                          const SecretAnswer &answer) mutable {
        if (!answer.isGood()) {
            account.remembers = false;
            account.writeSignedIn();
        }
        tellSettled(round, tr("You are signed in, but the password is not remembered."), answer);
    };
    SecretStore::write(name, password, this, kept);
}

void LoginSecrets::forget(const CloudAccount &account)
{
    SecretStore::remove(account.secretName(), this, [this, round = m_round](const SecretAnswer &answer) {
        tellSettled(round,
            tr("You are signed in, but the password that was remembered earlier is still kept."), answer);
    });
}

void LoginSecrets::tellSettled(int round, const QString &failure, const SecretAnswer &answer)
{
    if (round == m_round) {
        emit settled(answer.isGood() ? QString() : failure + QLatin1Char(' ') + SecretStore::text(answer));
    }
}
