#include "browserfoot.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace {

constexpr int progressWidth = 160;

QLabel *plainLabel(const char *name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

BrowserFoot::BrowserFoot(QWidget *parent)
    : QWidget(parent)
    , m_said(plainLabel("said", this))
    , m_progress(new QProgressBar(this))
    , m_stop(new QPushButton(tr("Sto&p"), this))
    , m_open(new QPushButton(tr("Open S&eries"), this))
    , m_who(plainLabel("who", this))
    , m_signIn(new QPushButton(this))
{
    m_said->setWordWrap(true);
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(progressWidth);
    m_stop->setObjectName(QStringLiteral("stop"));
    m_open->setObjectName(QStringLiteral("open"));
    m_signIn->setObjectName(QStringLiteral("signIn"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_said, 1);
    for (QWidget *part : QVector<QWidget *>{m_progress, m_stop, m_open, m_who, m_signIn}) {
        row->addWidget(part);
    }
    setFetching(false);
    connect(m_stop, &QPushButton::clicked, this, &BrowserFoot::stopWanted);
    connect(m_open, &QPushButton::clicked, this, &BrowserFoot::openWanted);
    connect(m_signIn, &QPushButton::clicked, this, &BrowserFoot::signInWanted);
}

void BrowserFoot::say(const QString &text)
{
    m_said->setText(text);
}

void BrowserFoot::setSession(const CloudSession &session)
{
    m_signIn->setText(session.isOpen() ? tr("Si&gn In As…") : tr("Si&gn In…"));
    m_who->setText(session.isOpen()
            ? tr("%1 at %2")
                  .arg(session.user.isEmpty() ? tr("Token") : session.user, session.service.address.host())
            : tr("Not signed in"));
}

void BrowserFoot::setFetching(bool isFetching)
{
    m_progress->setVisible(isFetching);
    m_stop->setVisible(isFetching);
}

void BrowserFoot::setOpenable(bool isOpenable)
{
    m_open->setEnabled(isOpenable);
}
