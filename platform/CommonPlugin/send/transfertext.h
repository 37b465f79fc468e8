#pragma once

#include "commonplugin_export.h"
#include "dicomdestination.h"
#include "networkfailure.h"
#include "sentjob.h"
#include "storeoutcome.h"

#include <QString>
#include <QStringList>

/// The sentences about transfers over the DICOM network, for every window that shows one. They depend on
/// their parameters and the program's language and locale alone: any thread, while neither is being changed.
namespace TransferText {

/// A sentence, with what the system, a peer or a parser said about it, if anything.
COMMONPLUGIN_EXPORT QString withDetail(const QString &sentence, const QString &detail);

/// Why a node could not be talked to; empty where nothing failed.
COMMONPLUGIN_EXPORT QString of(const NetworkFailure &failure);
/// What a peer's answer to an object means, with its number: "Out of resources (A700)".
COMMONPLUGIN_EXPORT QString ofStatus(quint16 status);
/// What became of an object, in the words of the peer or of this side.
COMMONPLUGIN_EXPORT QString of(const StoreOutcome &outcome);
COMMONPLUGIN_EXPORT QString ofState(SendState state);
/// How a check of the connection came out.
COMMONPLUGIN_EXPORT QString ofEcho(const NetworkFailure &failure, qint64 milliseconds);
/// What is wrong with a destination; empty where nothing is.
COMMONPLUGIN_EXPORT QString ofFault(DestinationFault fault, const QString &name);
/// A destination by its name, where it has one, and its AE title.
COMMONPLUGIN_EXPORT QString ofDestination(const QString &name, const QString &aeTitle);
/// Names as one list, with how many more there are: "A, B and 3 more".
COMMONPLUGIN_EXPORT QString ofPatients(const QStringList &names, int count);
/// "12 of 400 sent, 3 failed"
COMMONPLUGIN_EXPORT QString ofCounts(qint64 sent, qint64 total, qint64 failed);
/// "12 images/s, 0:30 left"; empty where that cannot be said.
COMMONPLUGIN_EXPORT QString ofRate(double perSecond, qint64 millisecondsLeft);

} // namespace TransferText
