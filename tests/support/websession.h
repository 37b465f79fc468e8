#pragma once

#include "cloudsession.h"
#include "webarchive.h"

/// A service as the user of WebArchive asks it, or somebody with another password.
inline WebService webServiceAt(const QString &address, const char *password = WebArchive::password)
{
    WebService service;
    service.address = QUrl(address);
    service.authorization = WebService::basic(QLatin1String(WebArchive::user), QLatin1String(password));
    return service;
}

/// That user, signed in.
inline CloudSession webSessionAt(const QString &address, const char *password = WebArchive::password)
{
    CloudSession session;
    session.service = webServiceAt(address, password);
    session.user = QLatin1String(WebArchive::user);
    session.id = CloudSession::opaqueId();
    return session;
}
