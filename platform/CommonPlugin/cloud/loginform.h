#pragma once

#include "cloudaccount.h"
#include "cloudsession.h"
#include "commonplugin_export.h"
#include "webfailure.h"

#include <QWidget>

class CloudSignIn;
class LoginFields;
class LoginSecrets;
class QLabel;
class QLayout;
class QProgressBar;
class QPushButton;

/**
 * The window in which a user signs in to the cloud, or goes on without it. It checks the service before it
 * says so; on success the process has its session (HttpUploadFile), username.ini is written and, where the
 * user wanted that, the password is in the desktop's secret store. It keeps itself for the next opening; each
 * showing begins anew. Whether it has a frame and stays on top is the caller's. GUI thread.
 */
class COMMONPLUGIN_EXPORT LoginForm : public QWidget
{
    Q_OBJECT

public:
    static constexpr int localUser = 0; ///< userType of who works without the cloud
    static constexpr int cloudUser = 1;

    explicit LoginForm(QWidget *parent = nullptr);
    ~LoginForm() override;

signals:
    /// Somebody has signed in. jsessionid is empty for a local user.
    void loginInfo(QByteArray user, QByteArray password, QByteArray jsessionid, int userType);
    /// The window was closed without that.
    void cancelled();
    /// It was closed after that.
    void left();

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void build();
    QWidget *buildHead();
    QLayout *buildButtons();
    void centre();
    void keepSize();
    void begin();
    bool isAwaited(const CloudAccount &account) const;
    void onRemembered(const CloudAccount &account, const QString &password);
    void refresh();
    void submit();
    void signInLocally();
    void giveUp();
    void onSignedIn(const CloudSession &session);
    void onFailed(const WebFailure &failure);
    void onSettled(const QString &problem);
    void finish(
        const QByteArray &user, const QByteArray &password, const QByteArray &sessionId, int userType);
    void setBusy(bool isBusy);
    void say(const QString &text);
    void sayAfterwards(const QString &text);

    LoginFields *m_fields = nullptr;
    QLabel *m_said = nullptr;
    QProgressBar *m_busy = nullptr;
    QPushButton *m_submit = nullptr;
    QPushButton *m_cancel = nullptr;
    CloudSignIn *m_signIn;
    LoginSecrets *m_secrets;
    CloudAccount m_account; ///< that is being checked
    QPoint m_grip; ///< where the mouse holds the window, from its corner
    bool m_isSignedIn = false;
    int m_height = 0; ///< of this opening of the window
};
