#pragma once

#include "imagebase_export.h"

#include <QString>

constexpr int longestAeTitle = 16;
constexpr int highestPort = 65535;
/// Whether an application may be called so: printable ASCII without a backslash, not only spaces.
IMAGEBASE_EXPORT bool isAeTitle(const QString &title);

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
