#pragma once

#include <functional>

class QObject;

/// Looks, over the session's bus and without blocking, for a program that keeps secrets. Callbacks come from
/// the event loop, and not after their context has gone. GUI thread.
namespace SecretProvider {

enum class State { NoBus, None, There };

void find(QObject *context, const std::function<void(State)> &then);
/// Whether the place for new secrets is locked, or is still to be made.
void findLock(QObject *context, const std::function<void(bool isLocked)> &then);

} // namespace SecretProvider
