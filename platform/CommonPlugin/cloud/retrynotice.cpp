#include "retrynotice.h"

#include "durationtext.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

RetryNotice::RetryNotice(QWidget *parent)
    : QWidget(parent)
    , m_text(new QLabel(this))
{
    constexpr int tellMs = 500;
    constexpr int lingerMs = 1500;
    m_text->setObjectName(QStringLiteral("retryText"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto *button = new QPushButton(tr("Tr&y Now"), this);
    button->setObjectName(QStringLiteral("tryNow"));
    button->setAccessibleName(tr("Try now"));
    button->setToolTip(tr("Ask the service at once, without waiting for the time that is shown"));
    button->setAutoDefault(false);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text, 1);
    layout->addWidget(button);
    connect(button, &QPushButton::clicked, this, &RetryNotice::tryWanted);
    m_second.setInterval(tellMs);
    connect(&m_second, &QTimer::timeout, this, &RetryNotice::tell);
    m_linger.setSingleShot(true);
    m_linger.setInterval(lingerMs);
    connect(&m_linger, &QTimer::timeout, this, [this] {
        m_second.stop();
        hide();
    });
    hide();
}

void RetryNotice::showTrouble(const QString &why, qint64 nextTryMs)
{
    m_why = why;
    m_nextTryMs = nextTryMs;
    m_linger.stop();
    tell();
    show();
    if (!m_second.isActive()) {
        m_second.start();
    }
}

void RetryNotice::clear()
{
    if (isHidden() || m_linger.isActive()) {
        return;
    }
    m_nextTryMs = 0;
    tell();
    m_linger.start();
}

void RetryNotice::tell()
{
    constexpr qint64 second = 1000;
    const qint64 left = m_nextTryMs - QDateTime::currentMSecsSinceEpoch();
    m_text->setText(left > 0 ? tr("%1. Next try in %2.", "why a service is left alone")
                                   .arg(m_why, durationText(left + second - 1))
                             : tr("%1. Trying again now…", "why a service is left alone").arg(m_why));
}
