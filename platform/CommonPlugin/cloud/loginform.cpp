#include "loginform.h"

#include "cloudsignin.h"
#include "httpuploadfile.h"
#include "loginfields.h"
#include "loginsecrets.h"
#include "webfailuretext.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QShowEvent>

void LoginForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        m_height = 0;
        begin();
        keepSize();
        centre();
    }
}

void LoginForm::begin()
{
    m_isSignedIn = false;
    const CloudAccount account = CloudAccount::read();
    m_fields->showAccount(account);
    m_fields->setRememberingRefused({});
    m_cancel->setText(tr("Cancel"));
    say({});
    setBusy(false);
    m_fields->focusFirstEmpty();
    m_secrets->begin(account);
}

/// Of the remembered password, unless the user was faster.
bool LoginForm::isAwaited(const CloudAccount &account) const
{
    return isVisible() && !m_signIn->isRunning() && !m_isSignedIn && m_fields->password().isEmpty()
        && m_fields->account().secretName() == account.secretName();
}

void LoginForm::onRemembered(const CloudAccount &account, const QString &password)
{
    if (isAwaited(account)) {
        m_fields->fillIn(password);
        m_submit->setFocus(Qt::OtherFocusReason);
    }
}

void LoginForm::submit()
{
    if (m_signIn->isRunning() || m_isSignedIn || !m_fields->isComplete()) {
        return;
    }
    if (m_fields->isLocal()) {
        signInLocally();
        return;
    }
    m_account = m_fields->account();
    if (!m_account.isAddressGood()) {
        say(tr("The address must begin with https:// or http:// and name a host, without a user or a "
               "password."));
        m_fields->focusFirstEmpty();
        return;
    }
    say({});
    setBusy(true);
    m_signIn->start(m_account, m_fields->password());
}

void LoginForm::signInLocally()
{
    HttpUploadFile::instance()->endSession();
    if (!CloudAccount::read().writeLocal()) {
        say(tr("This file cannot be written: %1").arg(CloudAccount::file()));
        return;
    }
    finish({}, {}, {}, localUser);
    close();
}

void LoginForm::onFailed(const WebFailure &failure)
{
    setBusy(false);
    if (failure.problem == WebProblem::Stopped) {
        return;
    }
    say(WebFailureText::of(failure));
    if (failure.problem == WebProblem::CertificateRefused) {
        m_fields->offerAuthority();
    }
    m_fields->focusFirstEmpty();
}

void LoginForm::onSignedIn(const CloudSession &session)
{
    const QString password = m_fields->password();
    HttpUploadFile::instance()->setSession(session);
    const CloudAccount previous = CloudAccount::lastSignedIn();
    const bool isWritten = m_account.writeSignedIn();
    const QPointer<LoginForm> self(this);
    finish(m_account.user.toUtf8(), password.toUtf8(), session.id, cloudUser);
    if (!self) {
        return;
    }
    if (!isWritten) {
        sayAfterwards(tr("You are signed in, but this file cannot be written: %1").arg(CloudAccount::file()));
        return;
    }
    if (m_account.remembers) {
        say(tr("Signed in. The password goes to the secret store of the desktop…"));
    }
    m_secrets->settle(m_account, password, previous);
}

/// The window stays until that is done, and longer where it failed; by then it may have been closed.
void LoginForm::onSettled(const QString &problem)
{
    if (isVisible() && problem.isEmpty()) {
        close();
    } else if (isVisible()) {
        sayAfterwards(problem);
    }
}

void LoginForm::finish(
    const QByteArray &user, const QByteArray &password, const QByteArray &sessionId, int userType)
{
    m_isSignedIn = true;
    emit loginInfo(user, password, sessionId, userType);
}

/// For what there is to say once the user is signed in.
void LoginForm::sayAfterwards(const QString &text)
{
    setBusy(false);
    say(text);
    m_submit->hide();
    m_cancel->setText(tr("Close"));
    m_cancel->setFocus();
}

void LoginForm::say(const QString &text)
{
    m_said->setText(text);
    m_said->setVisible(!text.isEmpty());
}

void LoginForm::setBusy(bool isBusy)
{
    m_busy->setVisible(isBusy);
    m_fields->setEnabled(!isBusy);
    m_submit->show();
    refresh();
}

void LoginForm::refresh()
{
    m_submit->setText(m_fields->isLocal() ? tr("Work Locally") : tr("Sign In"));
    m_submit->setAccessibleName(m_submit->text());
    m_submit->setEnabled(m_fields->isEnabled() && m_fields->isComplete());
}

void LoginForm::giveUp()
{
    if (m_signIn->isRunning()) {
        m_signIn->cancel();
    } else {
        close();
    }
}

void LoginForm::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    m_signIn->cancel();
    m_fields->clearPassword();
    if (isVisible() && m_isSignedIn) {
        emit left();
    } else if (isVisible()) {
        emit cancelled();
    }
}

void LoginForm::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        giveUp();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (m_cancel->hasFocus()) {
            giveUp();
        } else {
            submit();
        }
    } else {
        QWidget::keyPressEvent(event);
    }
}
