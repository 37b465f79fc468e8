#include "secretstore.h"

#include "secretprovider.h"
#include "transfertext.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>
#include <qt5keychain/keychain.h>

#include <memory>

namespace {

using Problem = SecretAnswer::Problem;

constexpr char keychainService[] = "patientmanager-cloud";

/// Translation context and sentences of this file.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SecretStore)
};

Problem problemOf(QKeychain::Error error)
{
    switch (error) {
    case QKeychain::NoError:
        return Problem::None;
    case QKeychain::EntryNotFound:
        return Problem::NotThere;
    case QKeychain::AccessDeniedByUser:
    case QKeychain::AccessDenied:
        return Problem::Denied;
    case QKeychain::NoBackendAvailable:
    case QKeychain::NotImplemented:
        return Problem::NoProvider;
    default:
        return Problem::Failed;
    }
}

/// One question on its way: whoever is first answers it, and only while its asker lives.
class Question
{
public:
    Question(QObject *context, SecretStore::Then then)
        : m_context(context)
        , m_then(std::move(then))
    { }

    bool isOpen() const { return m_context && m_then; }
    QObject *context() const { return m_context; }
    void answer(const SecretAnswer &answer)
    {
        const SecretStore::Then then = std::exchange(m_then, nullptr);
        if (then && m_context) {
            then(answer);
        }
    }

private:
    const QPointer<QObject> m_context;
    SecretStore::Then m_then;
};

using Asked = std::shared_ptr<Question>;

/// A failure of a store that is locked is called so, whatever the store called it.
void explain(const Asked &asked, const SecretAnswer &failure)
{
    if (!asked->isOpen()) {
        return;
    }
    SecretProvider::findLock(asked->context(), [asked, failure](bool isLocked) {
        asked->answer(isLocked ? SecretAnswer{Problem::Locked, {}, {}} : failure);
    });
}

void start(QKeychain::Job *job, const Asked &asked)
{
    job->setInsecureFallback(false);
    QObject::connect(job, &QKeychain::Job::finished, asked->context(), [asked](QKeychain::Job *done) {
        SecretAnswer answer{problemOf(done->error()), {}, done->errorString()};
        if (const auto *reading = qobject_cast<QKeychain::ReadPasswordJob *>(done)) {
            answer.secret = reading->textData();
        }
        if (answer.isGood() || answer.problem == Problem::NotThere) {
            asked->answer(answer);
        } else {
            explain(asked, answer);
        }
    });
    job->start();
}

/// Asks only where there is a store to be asked: without one, the library would wait for a bus.
void ask(QKeychain::Job *job, const QString &name, QObject *context, const SecretStore::Then &then)
{
    job->setKey(name);
    const auto asked = std::make_shared<Question>(context, then);
    QTimer::singleShot(SecretStore::patienceMs, context, [asked] {
        if (asked->isOpen()) {
            explain(asked, {Problem::NoAnswer, {}, {}});
        }
    });
    SecretStore::check(context, [job = QPointer<QKeychain::Job>(job), asked](const SecretAnswer &answer) {
        if (answer.isGood() && job) {
            start(job, asked);
            return;
        }
        delete job;
        asked->answer(answer);
    });
}

QString service()
{
    return QLatin1String(keychainService);
}

} // namespace

void SecretStore::check(QObject *context, const Then &then)
{
    SecretProvider::find(context, [then](SecretProvider::State state) {
        const Problem problem = state == SecretProvider::State::NoBus ? Problem::NoBus
            : state == SecretProvider::State::None                    ? Problem::NoProvider
                                                                      : Problem::None;
        then({problem, {}, {}});
    });
}

void SecretStore::read(const QString &name, QObject *context, const Then &then)
{
    ask(new QKeychain::ReadPasswordJob(service(), context), name, context, then);
}

void SecretStore::write(const QString &name, const QString &secret, QObject *context, const Then &then)
{
    auto *job = new QKeychain::WritePasswordJob(service(), context);
    job->setTextData(secret);
    ask(job, name, context, then);
}

void SecretStore::remove(const QString &name, QObject *context, const Then &then)
{
    ask(new QKeychain::DeletePasswordJob(service(), context), name, context, [then](SecretAnswer answer) {
        if (answer.problem == Problem::NotThere) {
            answer.problem = Problem::None;
        }
        then(answer);
    });
}

QString SecretStore::text(const SecretAnswer &answer)
{
    switch (answer.problem) {
    case Problem::None:
        return {};
    case Problem::NotThere:
        return Text::tr("The secret store does not have this password.");
    case Problem::NoBus:
        return Text::tr("Passwords cannot be remembered: no desktop session with a secret store runs here.");
    case Problem::NoProvider:
        return Text::tr("Passwords cannot be remembered: this desktop has no secret store.");
    case Problem::Locked:
        return Text::tr("The secret store of the desktop is locked.");
    case Problem::Denied:
        return Text::tr("The secret store of the desktop refused.");
    case Problem::NoAnswer:
        return Text::tr("The secret store of the desktop does not answer.");
    case Problem::Failed:
        return TransferText::withDetail(Text::tr("The secret store of the desktop failed"), answer.detail);
    }
    return {};
}
