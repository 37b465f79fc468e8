#include "cloudsession.h"

#include <QUuid>

bool CloudSession::isAt(const QString &address) const
{
    return plainAddress(service.address) == plainAddress(QUrl(address));
}

QString CloudSession::plainAddress(const QUrl &address)
{
    return address
        .adjusted(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::StripTrailingSlash
            | QUrl::NormalizePathSegments)
        .toString(QUrl::FullyEncoded);
}

QByteArray CloudSession::opaqueId()
{
    return QUuid::createUuid().toByteArray(QUuid::Id128);
}
