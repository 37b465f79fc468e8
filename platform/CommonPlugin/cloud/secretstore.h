#pragma once

#include "commonplugin_export.h"

#include <QString>

#include <functional>

class QObject;

/// What the secret store answered.
struct SecretAnswer
{
    enum class Problem : quint8 {
        None,
        NotThere, ///< it knows no such secret
        NoBus, ///< no desktop session runs that could have one
        NoProvider, ///< the desktop has no secret store
        Locked, ///< it is locked, and was not unlocked
        Denied, ///< the user or the desktop refused
        NoAnswer, ///< within the time that it was given
        Failed ///< detail is its own word
    };
    Problem problem = Problem::None;
    QString secret; ///< of a reading
    QString detail;

    bool isGood() const { return problem == Problem::None; }
};

/**
 * Passwords in the desktop's secret store, and nowhere else: where none runs, the answer says so, and nothing
 * is kept. Nothing blocks; each call is answered once, from the event loop and within patienceMs, unless its
 * context has gone by then. A locked store may ask the user to unlock it meanwhile. GUI thread.
 */
namespace SecretStore {

using Then = std::function<void(const SecretAnswer &answer)>;

constexpr int patienceMs = 60'000; ///< the user may have to unlock the store

/// Whether there is a secret store, before anything is asked of it.
COMMONPLUGIN_EXPORT void check(QObject *context, const Then &then);
/// @param name of the secret, as CloudAccount::secretName() makes it
COMMONPLUGIN_EXPORT void read(const QString &name, QObject *context, const Then &then);
COMMONPLUGIN_EXPORT void write(
    const QString &name, const QString &secret, QObject *context, const Then &then);
/// Good also where there was none.
COMMONPLUGIN_EXPORT void remove(const QString &name, QObject *context, const Then &then);

/// The problem as a sentence for people; empty for None.
COMMONPLUGIN_EXPORT QString text(const SecretAnswer &answer);

} // namespace SecretStore
