// The sign-in window's parts: how they are laid out, and how it does without a frame.
#include "loginform.h"

#include "cloudsignin.h"
#include "loginfields.h"
#include "loginsecrets.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int usualWidth = 440;
constexpr int margin = 20;
constexpr int headMargin = 16;
constexpr int roomLines = 6; ///< of what is said, and hints
constexpr qreal headScale = 1.35;

} // namespace

LoginForm::LoginForm(QWidget *parent)
    : QWidget(parent)
    , m_signIn(new CloudSignIn(this))
    , m_secrets(new LoginSecrets(this))
{
    build();
    connect(m_signIn, &CloudSignIn::signedIn, this, &LoginForm::onSignedIn);
    connect(m_signIn, &CloudSignIn::failed, this, &LoginForm::onFailed);
    connect(m_fields, &LoginFields::changed, this, &LoginForm::refresh);
    connect(m_secrets, &LoginSecrets::checked, m_fields, &LoginFields::setRememberingRefused);
    connect(m_secrets, &LoginSecrets::found, this, &LoginForm::onRemembered);
    connect(
        m_secrets, &LoginSecrets::unreadable, this, [this](const CloudAccount &account, const QString &why) {
            if (isAwaited(account)) {
                say(why);
            }
        });
    connect(m_secrets, &LoginSecrets::settled, this, &LoginForm::onSettled);
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
    layout->setSizeConstraint(QLayout::SetNoConstraint); // keepSize() has it
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

/// Without a frame few desktops place it.
void LoginForm::centre()
{
    if (!isWindow()) {
        return;
    }
    const QWidget *before = QApplication::activeWindow();
    const QRect place = before && before != this ? before->frameGeometry()
                                                 : QGuiApplication::primaryScreen()->availableGeometry();
    move(place.center() - rect().center());
}

/// A window that changes its size with every message is hard to follow: it has room for the usual ones, and
/// grows for more.
void LoginForm::keepSize()
{
    layout()->activate();
    const int needed = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(usualWidth)
                                                     : layout()->totalSizeHint().height();
    if (m_height == 0) {
        m_height = needed + roomLines * fontMetrics().lineSpacing();
    }
    m_height = qMax(m_height, needed);
    setFixedSize(usualWidth, m_height);
}

bool LoginForm::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest && isVisible()) {
        keepSize();
    }
    return QWidget::event(event);
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
