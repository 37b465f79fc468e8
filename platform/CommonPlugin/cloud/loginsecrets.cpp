#include "loginsecrets.h"

#include "secretstore.h"

namespace {

/// A failure in sentences; empty where there was none.
QString withReason(const QString &failure, const SecretAnswer &answer)
{
    return answer.isGood() ? QString() : failure + QLatin1Char(' ') + SecretStore::text(answer);
}

} // namespace

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

void LoginSecrets::settle(const CloudAccount &account, const QString &password, const CloudAccount &previous)
{
    const bool isOutdated =
        previous.remembers && (!account.remembers || previous.secretName() != account.secretName());
    const auto keepNew = [this, account, password, round = m_round](const QString &problem) {
        keep(account, password, [this, problem, round](const QString &another) {
            if (round == m_round) {
                emit settled(QStringList{problem, another}.join(QLatin1Char('\n')).trimmed());
            }
        });
    };
    isOutdated ? forget(previous, keepNew) : keepNew({});
}

void LoginSecrets::keep(CloudAccount account, const QString &password, const Then &then)
{
    if (!account.remembers) {
        then({});
        return;
    }
    const QString name = account.secretName();
    const auto kept = [account = std::move(account), then](const SecretAnswer &answer) mutable {
        if (!answer.isGood()) {
            account.remembers = false;
            account.writeSignedIn();
        }
        then(withReason(LoginSecrets::tr("You are signed in, but the password is not remembered."), answer));
    };
    SecretStore::write(name, password, this, kept);
}

void LoginSecrets::forget(const CloudAccount &account, const Then &then)
{
    SecretStore::remove(account.secretName(), this, [then](const SecretAnswer &answer) {
        then(withReason(LoginSecrets::tr(
                            "You are signed in, but the password that was remembered earlier is still kept."),
            answer));
    });
}
