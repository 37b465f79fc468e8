#pragma once

#include <QByteArray>
#include <QRandomGenerator>

/// Makes the packets of a DICOM peer, right ones and wrong ones.
namespace PduBuilder {

/// A request for CT storage and verification, contexts 1 and 3, by explicit little endian.
QByteArray associateRequest(const QByteArray &called, const QByteArray &calling);
/// A C-ECHO request over context 3.
QByteArray echoRequest();
/// A C-STORE request over context 1, without its data.
QByteArray storeRequest(const QByteArray &instance);
/// A piece of a command or of data in a packet of its own.
QByteArray dataPdu(quint8 context, quint8 flags, const QByteArray &bytes);
/// A command that holds sequences in each other, as deep as it fits into a packet.
QByteArray deepCommand(int depth);

/// One of these or of noise, damaged in one of several ways.
QByteArray broken(QRandomGenerator &random, const QByteArray &called);

} // namespace PduBuilder
