#pragma once

#include "cloudclientplugin_export.h"
#include "webservice.h"

#include <QByteArray>
#include <QString>

/// Who is signed in at which service. A value; what is secret in it is never logged or stored.
struct CLOUDCLIENTPLUGIN_EXPORT CloudSession
{
    WebService service;
    QString user;
    QByteArray id; ///< the service's cookie or token, else an opaque random one; never a password

    bool isOpen() const { return !id.isEmpty(); }
    /// Whether an address, as a task remembers it, is this session's service.
    bool isAt(const QString &address) const;
    /// An address as tasks remember it: without a user, a query and a closing slash.
    static QString plainAddress(const QUrl &address);
    /// An id that stands for an authenticated session and says nothing else.
    static QByteArray opaqueId();
};
