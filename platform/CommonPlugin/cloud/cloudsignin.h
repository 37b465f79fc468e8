#pragma once

#include "cloudaccount.h"
#include "cloudsession.h"
#include "commonplugin_export.h"
#include "webfailure.h"

#include <QObject>
#include <QPointer>

#include <memory>

class BoundedAnswer;
class QNetworkReply;
class WebClient;

/**
 * Asks a service whether it is a DICOMweb service that lets an account in, by the smallest search there is.
 * One question at a time; each ends with exactly one of the two signals, from the event loop, a cancelled one
 * with failed(Stopped). It does not touch the process's session: that is for whoever asks. GUI thread.
 */
class COMMONPLUGIN_EXPORT CloudSignIn : public QObject
{
    Q_OBJECT

public:
    explicit CloudSignIn(QObject *parent = nullptr);
    ~CloudSignIn() override;

    /// @param password or, where the account has no user, an access token
    void start(const CloudAccount &account, const QString &password);
    /// Signs in the account of username.ini with the password in the secret store; NoSecret where there is
    /// none, or where that user has signed out.
    void startRemembered();
    void cancel();
    bool isRunning() const { return m_isRunning; }

signals:
    void signedIn(const CloudSession &session);
    void failed(const WebFailure &failure);

private:
    void ask(const CloudAccount &account, const QString &password);
    void answered();
    void end(const WebFailure &failure);

    std::unique_ptr<WebClient> m_client;
    QPointer<QNetworkReply> m_reply;
    BoundedAnswer *m_answer = nullptr; ///< of the reply
    QString m_user;
    bool m_isRunning = false;
};
