#pragma once

#include "cloudclientplugin_export.h"
#include "cloudsession.h"

#include <QObject>
#include <QStringList>

#include <memory>

class CloudClientAsyncHandler;

/**
 * The workstation's one contact to the cloud service: who is signed in, and who makes uploads.
 *
 * It also knows the experts to whom a study can be sent: a group for each expert in an INI file, named by
 * the expert's id, with the key "name". One object for the process, made on first use; GUI thread.
 */
class CLOUDCLIENTPLUGIN_EXPORT HttpUploadFile : public QObject
{
    Q_OBJECT

public:
    static HttpUploadFile *instance();

    /// @name The session
    /// @{
    /// Signs in, or signs in anew: what waits for this service goes on.
    void setSession(const CloudSession &session);
    const CloudSession &session() const { return m_session; }
    /// Signs out; uploads wait for the next session.
    void endSession();
    QByteArray getJsessionid() const { return m_session.id; }
    /// The proxy as a host and a port; empty where there is none of the user's own.
    QString getProxyURL() const;
    /// "http", "socks5", "none", or "system" where the system's settings hold.
    QString getProxyType() const;
    QString getProxyUser() const { return m_session.service.proxy.user(); }
    QString getProxyPassword() const { return m_session.service.proxy.password(); }
    /// The address of the service; empty where nobody is signed in.
    QString getAssistUrl() const;
    /// @}

    /// The maker of uploads, the same for all who ask.
    std::shared_ptr<CloudClientAsyncHandler> newClientAsyncHandler();
    /// Lets go of the index: uploads stop within a second, and CloudClientAsyncHandler::unfinished() brings
    /// them back. For who is about to open another index, or to end the program.
    void releaseIndex();

    /// Names the file of the experts; an empty text goes back to "config/experts.ini" beside the program.
    static void setExpertFile(const QString &path);

    /// Reads the experts anew; a file that is missing gives none.
    void expertInfoList();
    /// Names of the experts as last read, in the order of their ids; the id where there is no name.
    QStringList getExpertNames() const;

signals:
    void sessionChanged();
    /// The service does not accept the session any more: the user should sign in again. Told once a session;
    /// uploads and downloads wait and go on after setSession().
    void sessionRefused();

private:
    HttpUploadFile() = default;
    ~HttpUploadFile() override;

    CloudSession m_session;
    std::shared_ptr<CloudClientAsyncHandler> m_handler;
    QStringList m_expertNames;
};
