#pragma once

#include "commonplugin_export.h"

#include <QNetworkProxy>
#include <QString>
#include <QStringList>

struct WebService;

/// The way to the cloud service, as username.ini keeps it in the group "cloudproxy". A value; GUI thread.
struct COMMONPLUGIN_EXPORT CloudProxy
{
    enum class Kind : quint8 { System, None, Http, Socks };
    Kind kind = Kind::System;
    QString host; ///< of a proxy of the user's own
    quint16 port = 0;

    static CloudProxy read();
    /// @return false where the file cannot be written
    bool write() const;
    bool operator==(const CloudProxy &other) const
    {
        return kind == other.kind && host == other.host && port == other.port;
    }

    /// What leads to a service; never a proxy where it is on this computer.
    QNetworkProxy proxyFor(const WebService &service) const;
};
