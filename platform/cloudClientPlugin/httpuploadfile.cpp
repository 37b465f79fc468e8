#include "httpuploadfile.h"

#include "cloudclientasynchandler.h"
#include "uploadengine.h"

#include <QCoreApplication>
#include <QSettings>

namespace {

constexpr char defaultFile[] = "/config/experts.ini";
constexpr char nameKey[] = "/name";

QString &chosenFile()
{
    static QString path;
    return path;
}

QString expertFile()
{
    return chosenFile().isEmpty() ? QCoreApplication::applicationDirPath() + QLatin1String(defaultFile)
                                  : chosenFile();
}

} // namespace

HttpUploadFile::~HttpUploadFile() = default;

HttpUploadFile *HttpUploadFile::instance()
{
    static HttpUploadFile only;
    return &only;
}

void HttpUploadFile::setSession(const CloudSession &session)
{
    m_session = session;
    UploadEngine::setSession(session);
    emit sessionChanged();
}

void HttpUploadFile::endSession()
{
    setSession(CloudSession());
}

QString HttpUploadFile::getProxyURL() const
{
    const QNetworkProxy &proxy = m_session.service.proxy;
    return proxy.hostName().isEmpty() ? QString()
                                      : proxy.hostName() + QLatin1Char(':') + QString::number(proxy.port());
}

QString HttpUploadFile::getProxyType() const
{
    switch (m_session.service.proxy.type()) {
    case QNetworkProxy::HttpProxy:
    case QNetworkProxy::HttpCachingProxy:
        return QStringLiteral("http");
    case QNetworkProxy::Socks5Proxy:
        return QStringLiteral("socks5");
    case QNetworkProxy::NoProxy:
        return QStringLiteral("none");
    default:
        return QStringLiteral("system");
    }
}

QString HttpUploadFile::getAssistUrl() const
{
    return m_session.isOpen() ? CloudSession::plainAddress(m_session.service.address) : QString();
}

std::shared_ptr<CloudClientAsyncHandler> HttpUploadFile::newClientAsyncHandler()
{
    if (!m_handler) {
        m_handler = std::make_shared<CloudClientAsyncHandler>();
    }
    return m_handler;
}

void HttpUploadFile::releaseIndex()
{
    UploadEngine::release();
}

void HttpUploadFile::setExpertFile(const QString &path)
{
    chosenFile() = path;
}

void HttpUploadFile::expertInfoList()
{
    QSettings experts(expertFile(), QSettings::IniFormat);
    experts.setIniCodec("UTF-8");
    m_expertNames.clear();
    const QStringList ids = experts.childGroups();
    for (const QString &id : ids) {
        m_expertNames.append(experts.value(id + QLatin1String(nameKey), id).toString());
    }
}

QStringList HttpUploadFile::getExpertNames() const
{
    return m_expertNames;
}
