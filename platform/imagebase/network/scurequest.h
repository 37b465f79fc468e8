#pragma once

#include "scuassociation.h"

struct T_ASC_Parameters;

/// What an association is asked for with.
namespace ScuRequest {

/// Whether the titles, the host and the port are such as can be asked.
bool isAddressGood(const DicomNode &node, const ScuOptions &options);
/// The number that a context has on the line, by its place among those offered.
constexpr int contextId(int place)
{
    return 2 * place + 1;
}
/// @param peerAddress the line's other end
/// @param parameters become the caller's, also where it fails; null where they could not be made
OFCondition make(const DicomNode &node, const ScuOptions &options, const QVector<ScuContext> &contexts,
    const QByteArray &peerAddress, T_ASC_Parameters **parameters);

} // namespace ScuRequest
