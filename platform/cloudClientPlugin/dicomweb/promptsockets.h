#pragma once

#include <QtGlobal>

/// The connections of this process to one port, which Qt Network keeps to itself.
namespace PromptSockets {

/// Has the system send at once what is written to them: it would otherwise hold each piece back until the
/// peer has acknowledged the one before, which peers put off.
void toPort(quint16 port);

} // namespace PromptSockets
