#include "loginform.h"

#include "cloudsignin.h"
#include "httpuploadfile.h"
#include "loginfields.h"
#include "secretstore.h"
#include "webfailuretext.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int usualWidth = 440;
constexpr int margin = 20;
constexpr int headMargin = 16;
constexpr qreal headScale = 1.35;

} // namespace

LoginForm::LoginForm(QWidget *parent)
    : QWidget(parent)
    , m_signIn(new CloudSignIn(this))
{
    build();
    connect(m_signIn, &CloudSignIn::signedIn, this, &LoginForm::onSignedIn);
    connect(m_signIn, &CloudSignIn::failed, this, &LoginForm::onFailed);
    connect(m_fields, &LoginFields::changed, this, &LoginForm::refresh);
}

LoginForm::~LoginForm() = default;

void LoginForm::build()
{
    setWindowTitle(tr("Sign In"));
    m_fields = new LoginFields(this);
    m_said = new QLabel(this);
    m_said->setObjectName(QStringLiteral("said"));
    m_said->setWordWrap(true);
    m_said->setTextFormat(Qt::PlainText);
    m_said->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_busy = new QProgressBar(this);
    m_busy->setObjectName(QStringLiteral("busy"));
    m_busy->setAccessibleName(tr("The service is being asked"));
    m_busy->setRange(0, 0);
    m_busy->setTextVisible(false);
    auto *body = new QVBoxLayout;
    body->setContentsMargins(margin, margin, margin, margin);
    body->setSpacing(margin / 2);
    body->addWidget(m_fields);
    body->addWidget(m_said);
    body->addWidget(m_busy);
    body->addStretch();
    body->addLayout(buildButtons());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1); // of the line around the window
    layout->setSpacing(0);
    layout->addWidget(buildHead());
    layout->addLayout(body, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    m_fields->setFixedWidth(usualWidth - 2 * margin);
    setBusy(false);
}

QWidget *LoginForm::buildHead()
{
    auto *head = new QFrame(this);
    head->setAutoFillBackground(true);
    head->setBackgroundRole(QPalette::Highlight);
    auto *title = new QLabel(windowTitle(), head);
    title->setForegroundRole(QPalette::HighlightedText);
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * headScale);
    font.setBold(true);
    title->setFont(font);
    auto *layout = new QVBoxLayout(head);
    layout->setContentsMargins(margin, headMargin, margin, headMargin);
    auto *subtitle = new QLabel(tr("Patient data in the cloud and on this computer"), head);
    subtitle->setForegroundRole(QPalette::HighlightedText);
    layout->addWidget(title);
    layout->addWidget(subtitle);
    return head;
}

QLayout *LoginForm::buildButtons()
{
    m_submit = new QPushButton(this);
    m_submit->setObjectName(QStringLiteral("submit"));
    m_submit->setDefault(true);
    m_submit->setToolTip(tr("Go on as this user"));
    m_cancel = new QPushButton(tr("Cancel"), this);
    m_cancel->setObjectName(QStringLiteral("cancel"));
    m_cancel->setAccessibleName(m_cancel->text());
    m_cancel->setToolTip(tr("Stop asking the service, or close this window"));
    connect(m_submit, &QPushButton::clicked, this, &LoginForm::submit);
    connect(m_cancel, &QPushButton::clicked, this, &LoginForm::giveUp);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_submit);
    buttons->addWidget(m_cancel);
    return buttons;
}

void LoginForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        centre();
        begin();
    }
}

/// Without a frame few desktops place it.
void LoginForm::centre()
{
    const QWidget *before = QApplication::activeWindow();
    const QRect place = before && before != this ? before->frameGeometry()
                                                 : QGuiApplication::primaryScreen()->availableGeometry();
    if (isWindow()) {
        adjustSize();
        move(place.center() - rect().center());
    }
}

void LoginForm::begin()
{
    m_isSignedIn = false;
    ++m_showing;
    const CloudAccount account = CloudAccount::read();
    m_fields->showAccount(account);
    m_fields->setRememberingRefused({});
    m_cancel->setText(tr("Cancel"));
    say({});
    setBusy(false);
    m_fields->focusFirstEmpty();
    SecretStore::check(this, [this, account](const SecretAnswer &answer) {
        m_fields->setRememberingRefused(SecretStore::text(answer));
        if (answer.isGood() && account.remembers) {
            fillIn(account);
        }
    });
}

/// The remembered password, unless the user was faster.
void LoginForm::fillIn(const CloudAccount &account)
{
    SecretStore::read(account.secretName(), this, [this, account](const SecretAnswer &answer) {
        const CloudAccount shown = m_fields->account();
        const bool isAwaited = isVisible() && !m_signIn->isRunning() && m_fields->password().isEmpty()
            && shown.secretName() == account.secretName();
        if (isAwaited && answer.isGood()) {
            m_fields->fillIn(answer.secret);
            m_submit->setFocus(Qt::OtherFocusReason);
        } else if (isAwaited && answer.problem != SecretAnswer::Problem::NotThere) {
            say(SecretStore::text(answer));
        }
    });
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
    const bool wasRemembered = CloudAccount::read().remembers;
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
        keepPassword(password);
    } else if (wasRemembered) {
        forgetPassword();
    } else {
        close();
    }
}

/// The window stays until that is done, and longer where it failed.
void LoginForm::keepPassword(const QString &password)
{
    say(tr("Signed in. The password goes to the secret store of the desktop…"));
    const auto kept = [this, account = m_account, showing = m_showing](const SecretAnswer &answer) mutable {
        if (!answer.isGood()) {
            account.remembers = false;
            account.writeSignedIn();
        }
        closeAfter(showing, tr("You are signed in, but the password is not remembered."), answer);
    };
    SecretStore::write(m_account.secretName(), password, this, kept);
}

void LoginForm::forgetPassword()
{
    SecretStore::remove(
        m_account.secretName(), this, [this, showing = m_showing](const SecretAnswer &answer) {
            closeAfter(showing,
                tr("You are signed in, but the password that was remembered earlier is still kept."), answer);
        });
}

/// By the time of the answer the window may have been closed, and opened for somebody else.
void LoginForm::closeAfter(int showing, const QString &failure, const SecretAnswer &answer)
{
    if (showing != m_showing || !isVisible()) {
        return;
    }
    if (answer.isGood()) {
        close();
    } else {
        sayAfterwards(failure + QLatin1Char(' ') + SecretStore::text(answer));
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

/// A window without a frame is moved by its ground.
void LoginForm::mousePressEvent(QMouseEvent *event)
{
    m_grip = event->globalPos() - frameGeometry().topLeft();
}

void LoginForm::mouseMoveEvent(QMouseEvent *event)
{
    if (isWindow() && event->buttons().testFlag(Qt::LeftButton)) {
        move(event->globalPos() - m_grip);
    }
}

void LoginForm::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
