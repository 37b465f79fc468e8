#pragma once

#include "cloudclientplugin_export.h"

#include <QByteArray>
#include <QList>
#include <QNetworkProxy>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QUrl>

/// Where a DICOMweb service is, and what we are to it.
struct CLOUDCLIENTPLUGIN_EXPORT WebService
{
    QUrl address; ///< of its root, as "https://archive/dicom-web"; "studies" is asked below it
    QByteArray
        authorization; ///< the value of the header of that name; empty for none. Never logged or stored
    bool mayBePlain = false; ///< whether credentials may travel unencrypted beyond this computer
    QNetworkProxy proxy{QNetworkProxy::DefaultProxy};
    QList<QSslCertificate> authorities; ///< trusted beside the system's own

    /// Whether the address names this computer.
    bool isLoopback() const;
    bool isSecure() const { return address.scheme() == QLatin1String("https"); }
    /// Whether asking would send credentials unencrypted where that is not allowed.
    bool exposesCredentials() const;
    /// The address of a resource, as "studies/1.2.3/series".
    QUrl at(const QString &resource) const;
    /// That an address names, or that its scheme has.
    static int portOf(const QUrl &url);
    /// How its certificate is verified.
    QSslConfiguration tls() const;

    static QByteArray basic(const QString &user, const QString &password);
    static QByteArray bearer(const QByteArray &token);
};
