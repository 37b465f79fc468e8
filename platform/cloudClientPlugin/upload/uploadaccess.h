#pragma once

#include <QByteArray>

/// The settings of a session as they are handed to a new upload, in UTF-8. The upload remembers the address
/// of its service and nothing else; who may store there is asked of the session at the time.
struct UploadAccess
{
    QByteArray jsessionid;
    QByteArray proxyUrl;
    QByteArray proxyType;
    QByteArray proxyUser;
    QByteArray proxyPassword;
    QByteArray assistUrl; ///< of the service; empty for the one that is signed in
};
