#include "storemessage.h"

#include "scuassociation.h"

#include <QtEndian>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/cond.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

constexpr quint16 priorityMedium = 0;

/// Adds an element of a command: implicit little endian, of even length.
void add(QByteArray &command, quint16 number, QByteArray value)
{
    if (value.size() % 2 != 0) {
        value.append('\0');
    }
    uchar head[8] = {};
    qToLittleEndian<quint16>(number, head + 2);
    qToLittleEndian<quint32>(static_cast<quint32>(value.size()), head + 4);
    command.append(reinterpret_cast<const char *>(head), sizeof head).append(value);
}

void add(QByteArray &command, quint16 number, quint16 value)
{
    char bytes[2] = {};
    qToLittleEndian(value, bytes);
    add(command, number, QByteArray(bytes, sizeof bytes));
}

QByteArray storeCommand(const StoreFile &file, quint16 messageNumber)
{
    QByteArray elements;
    add(elements, 0x0002, file.kind.sopClass);
    add(elements, 0x0100, quint16(DIMSE_C_STORE_RQ));
    add(elements, 0x0110, messageNumber);
    add(elements, 0x0700, priorityMedium);
    add(elements, 0x0800, quint16(DIMSE_DATASET_PRESENT));
    add(elements, 0x1000, file.sopInstance);
    char length[4] = {};
    qToLittleEndian<quint32>(static_cast<quint32>(elements.size()), length);
    QByteArray command;
    add(command, 0x0000, QByteArray(length, sizeof length));
    return command + elements;
}

} // namespace

StoreMessage::StoreMessage(ScuAssociation &association, const StoreFile &file, int context)
    : m_association(association)
    , m_file(file)
    , m_context(context)
{ }

StoreMessage::~StoreMessage()
{
    if (m_handle >= 0) {
        ::close(m_handle);
    }
}

bool StoreMessage::open()
{
    m_handle = ::open(m_file.path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (m_handle < 0 || lseek(m_handle, m_file.dataSet, SEEK_SET) < 0) {
        m_systemError = qt_error_string(errno);
        return false;
    }
    return true;
}

OFCondition StoreMessage::send()
{
    QByteArray command = storeCommand(m_file, m_association.native()->nextMsgID);
    m_association.joinWrites(true); // the peer need not wake up for a request without its data
    const OFCondition result = sendPiece(command.data(), command.size(), true, true);
    m_association.joinWrites(false);
    return result.good() ? sendDataSet() : result;
}

OFCondition StoreMessage::sendDataSet()
{
    T_ASC_Association *association = m_association.native();
    const auto room = static_cast<qint64>(association->sendPDVLength);
    auto *buffer = reinterpret_cast<char *>(association->sendPDVBuffer);
    OFCondition result = EC_Normal;
    for (qint64 left = m_file.size - m_file.dataSet; left > 0 && result.good();) {
        qint64 filled = 0;
        const qint64 wanted = std::min(left, room);
        while (filled < wanted) {
            const ssize_t got = ::read(m_handle, buffer + filled, static_cast<size_t>(wanted - filled));
            if (got <= 0) {
                m_systemError = qt_error_string(got < 0 ? errno : EIO);
                return DIMSE_SENDFAILED;
            }
            filled += got;
        }
        left -= filled;
        if (filled % 2 != 0) {
            buffer[filled++] = '\0'; // the end of a deflated data set; the room is even
        }
        result = sendPiece(buffer, filled, false, left == 0);
    }
    return result;
}

OFCondition StoreMessage::sendPiece(char *bytes, qint64 length, bool isCommand, bool isLast)
{
    DUL_PDV piece = {};
    piece.fragmentLength = static_cast<unsigned long>(length);
    piece.presentationContextID = static_cast<unsigned char>(m_context);
    piece.pdvType = isCommand ? DUL_COMMANDPDV : DUL_DATASETPDV;
    piece.lastPDV = isLast;
    piece.data = bytes;
    DUL_PDVLIST list = {};
    list.count = 1;
    list.pdv = &piece;
    return DUL_WritePDVs(&m_association.native()->DULassociation, &list);
}

void StoreMessage::describe(const StoreFile &file, quint16 number, T_DIMSE_Message &message)
{
    message.CommandField = DIMSE_C_STORE_RQ;
    T_DIMSE_C_StoreRQ &request = message.msg.CStoreRQ;
    request.MessageID = number;
    request.DataSetType = DIMSE_DATASET_PRESENT;
    request.Priority = DIMSE_PRIORITY_MEDIUM;
    qstrncpy(request.AffectedSOPClassUID, file.kind.sopClass.constData(), sizeof(DIC_UI));
    qstrncpy(request.AffectedSOPInstanceUID, file.sopInstance.constData(), sizeof(DIC_UI));
}

StoreProblem StoreMessage::problemOf(quint16 status)
{
    constexpr quint16 classMask = 0xf000;
    constexpr quint16 kindMask = 0xff00;
    const bool isWarning =
        (status & classMask) == 0xb000 || status == 0x0001 || status == 0x0107 || status == 0x0116;
    if (status == STATUS_Success || isWarning) {
        return StoreProblem::None;
    }
    if ((status & kindMask) == 0xa700) {
        return StoreProblem::OutOfResources;
    }
    return status == STATUS_STORE_Refused_SOPClassNotSupported ? StoreProblem::ClassNotAccepted
                                                               : StoreProblem::Refused;
}
