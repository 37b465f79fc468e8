#pragma once

#include "commonplugin_export.h"
#include "dicomnode.h"

#include <QString>
#include <QVector>

/// A DICOM node that images are sent to.
struct DicomDestination
{
    QString name; ///< of its group in the file
    QString aeTitle;
    QString ip; ///< an address or a host name
    int port = 0; ///< 0 where the file has none
    QString storedAs = {}; ///< its name in the file; empty for a new one

    /// As destinations, wherever they are stored.
    bool operator==(const DicomDestination &other) const
    {
        return name == other.name && aeTitle == other.aeTitle && ip == other.ip && port == other.port;
    }
};

/// What makes a destination one that cannot be used.
enum class DestinationFault {
    None,
    NoName,
    BadName, ///< has a character that group names cannot have
    SameName, ///< another destination is called so
    BadAeTitle, ///< not 1 to 16 printable ASCII characters without backslash
    NoAddress,
    BadPort ///< not 1 to 65535
};

/// The destinations as dicomsendservice.ini has them: a group each, in the file that forwarding and sending
/// read. Keys that are not known here stay, and go with a destination that gets another name. GUI thread.
namespace DestinationSettings {

using ::longestAeTitle;

COMMONPLUGIN_EXPORT QVector<DicomDestination> read();
/// Makes the file hold these and no others. @return whether it does
COMMONPLUGIN_EXPORT bool write(const QVector<DicomDestination> &destinations);
/// The file, existing or not.
COMMONPLUGIN_EXPORT QString file();
/// The fault of the destination at this place of a list.
COMMONPLUGIN_EXPORT DestinationFault faultOf(const QVector<DicomDestination> &destinations, int place);

} // namespace DestinationSettings
