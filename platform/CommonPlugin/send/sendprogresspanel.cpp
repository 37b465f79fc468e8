#include "sendprogresspanel.h"

#include "sendfailurelist.h"
#include "sendjoblist.h"
#include "sendnotifier.h"
#include "transfertext.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {

constexpr int updateMs = 100;
constexpr int tickMs = 1000;
constexpr int barSteps = 1000;

} // namespace

SendProgressPanel::SendProgressPanel(QWidget *parent)
    : QWidget(parent)
{
    m_time.start();
    build();
    m_update.setSingleShot(true);
    m_update.setInterval(updateMs);
    m_tick.setInterval(tickMs);
    connect(&m_update, &QTimer::timeout, this, &SendProgressPanel::update);
    connect(&m_tick, &QTimer::timeout, this, &SendProgressPanel::update);
    const auto later = [this] {
        if (!m_update.isActive()) {
            m_update.start();
        }
    };
    const SendNotifier *notifier = SendNotifier::instance();
    connect(notifier, &SendNotifier::changed, this, later);
    update();
}

void SendProgressPanel::build()
{
    m_headline = new QLabel(this);
    m_headline->setObjectName(QStringLiteral("headline"));
    m_headline->setTextFormat(Qt::PlainText);
    m_headline->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_bar = new QProgressBar(this);
    m_bar->setAccessibleName(tr("Progress of the send"));
    m_jobs = new SendJobList(this);
    m_failures = new SendFailureList(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_headline);
    layout->addWidget(m_bar);
    layout->addWidget(m_jobs, 1);
    layout->addWidget(m_failures, 2);
}

void SendProgressPanel::expect(qint64 images)
{
    m_batch.expect(images, m_time.elapsed());
    update();
}

void SendProgressPanel::count()
{
    m_batch.count(m_time.elapsed());
    if (!m_update.isActive()) {
        m_update.start();
    }
}

void SendProgressPanel::update()
{
    const bool wasSending = m_bar->isVisibleTo(this);
    const QVector<SentJob> &jobs = SendNotifier::instance()->jobs();
    m_batch.update(jobs, m_time.elapsed());
    showBatch();
    m_jobs->update();
    m_failures->update();
    setVisible(!m_batch.isEmpty() || !jobs.isEmpty());
    if (m_batch.isRunning() && !m_tick.isActive()) {
        m_tick.start();
    } else if (!m_batch.isRunning()) {
        m_tick.stop();
    }
    if (wasSending != m_batch.isRunning()) {
        emit sendingChanged();
    }
}

void SendProgressPanel::showBatch()
{
    QString text = TransferText::ofCounts(m_batch.sent(), m_batch.total(), m_batch.failed());
    if (m_batch.isRunning()) {
        const QString rate = TransferText::ofRate(m_batch.perSecond(), m_batch.millisecondsLeft());
        text += rate.isEmpty() ? QString() : QStringLiteral(" – ") + rate;
        if (m_batch.away() > 0) {
            text += QStringLiteral(" – ")
                + tr("%n destination(s) cannot be reached now", nullptr, m_batch.away());
        }
        const qint64 done = m_batch.sent() + m_batch.failed();
        m_bar->setRange(0, m_batch.total() > 0 ? barSteps : 0);
        m_bar->setValue(m_batch.total() > 0 ? int(done * barSteps / m_batch.total()) : 0);
    }
    m_headline->setText(text);
    m_headline->setVisible(!m_batch.isEmpty());
    m_bar->setVisible(m_batch.isRunning());
}
