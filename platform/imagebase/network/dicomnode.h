#pragma once

#include <QString>

/// A DICOM application on the network, as a person configures it.
struct DicomNode
{
    QString aeTitle; ///< of the application that is called; up to 16 characters
    QString host; ///< a name, or an IPv4 or IPv6 address
    int port = 0;

    bool operator==(const DicomNode &other) const
    {
        return aeTitle == other.aeTitle && host == other.host && port == other.port;
    }
};
