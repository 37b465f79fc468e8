#pragma once

#include "storefile.h"

class OFCondition;
class ScuAssociation;
struct T_DIMSE_Message;

/// A C-STORE request whose data set goes straight from its file to the line, piece by piece.
class StoreMessage
{
public:
    /// @param context the accepted context of exactly the file's transfer syntax
    StoreMessage(ScuAssociation &association, const StoreFile &file, int context);
    ~StoreMessage();
    StoreMessage(const StoreMessage &) = delete;
    StoreMessage &operator=(const StoreMessage &) = delete;

    bool open();
    /// Sends the request and the data set; a file that is shorter than it was leaves half a message.
    OFCondition send();
    /// What the system says against the file; empty where the file is not at fault.
    QString systemError() const { return m_systemError; }

    /// Fills in a request for DCMTK to send.
    static void describe(const StoreFile &file, quint16 number, T_DIMSE_Message &message);
    /// What a peer's answer means.
    static StoreProblem problemOf(quint16 status);

private:
    OFCondition sendPiece(char *bytes, qint64 length, bool isCommand, bool isLast);
    OFCondition sendDataSet();

    ScuAssociation &m_association;
    const StoreFile &m_file;
    const int m_context;
    int m_handle = -1;
    QString m_systemError;
};
