#include "sendprogresspanel.h"

#include "detaillabel.h"
#include "listheight.h"
#include "plaintableview.h"
#include "plaintooltip.h"
#include "sendfailuremodel.h"
#include "sendnotifier.h"
#include "transfertext.h"

#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int updateMs = 100;
constexpr int tickMs = 1000;
constexpr int barSteps = 1000;
constexpr int visibleJobs = 2;
constexpr int visibleFailures = 3; ///< with the header
constexpr int destinationCharacters = 26;
constexpr int subjectCharacters = 20;
constexpr int stateCharacters = 12;
constexpr int countCharacters = 28;
constexpr int fileCharacters = 40;
constexpr int jobRole = Qt::UserRole;
enum JobColumn { DestinationColumn, SubjectColumn, StateColumn, CountColumn, NoticeColumn };

/// 0 for no line.
qint64 jobOf(const QTreeWidgetItem *item)
{
    return item ? item->data(DestinationColumn, jobRole).toLongLong() : 0;
}

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
    m_jobArea = buildJobs();
    m_failureArea = buildFailures();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_headline);
    layout->addWidget(m_bar);
    layout->addWidget(m_jobArea, 1);
    layout->addWidget(m_failureArea, 2);
}

QWidget *SendProgressPanel::buildJobs()
{
    auto *area = new QWidget(this);
    m_jobs = new QTreeWidget(area);
    m_jobs->setObjectName(QStringLiteral("jobs"));
    m_jobs->setAccessibleName(tr("Sends"));
    m_jobs->setHeaderLabels({tr("Destination"), tr("Patient"), tr("State"), tr("Sent"), tr("Notice")});
    m_jobs->setRootIsDecorated(false);
    m_jobs->setUniformRowHeights(true);
    m_jobs->setMinimumHeight(heightOfRows(*m_jobs, visibleJobs));
    const int character = fontMetrics().averageCharWidth();
    m_jobs->setColumnWidth(DestinationColumn, destinationCharacters * character);
    m_jobs->setColumnWidth(SubjectColumn, subjectCharacters * character);
    m_jobs->setColumnWidth(StateColumn, stateCharacters * character);
    m_jobs->setColumnWidth(CountColumn, countCharacters * character);
    m_notice = new DetailLabel(area);
    m_notice->setObjectName(QStringLiteral("notice"));
    connect(m_jobs, &QTreeWidget::currentItemChanged, this, [this] {
        showDetails();
        enableButtons();
    });
    m_cancel = addButton(tr("Ca&ncel Send"), QStringLiteral("cancelSend"),
        tr("Send no more to the destination of this line; what it has taken stays there"));
    m_retry = addButton(tr("&Retry Failed"), QStringLiteral("retry"),
        tr("Send again what the destination of this line did not take"));
    SendNotifier *notifier = SendNotifier::instance();
    connect(m_cancel, &QPushButton::clicked, this,
        [this, notifier] { emit notifier->cancelRequested(currentJob()); });
    connect(m_retry, &QPushButton::clicked, this,
        [this, notifier] { emit notifier->retryRequested(currentJob()); });
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_notice, 1);
    buttons->addStretch();
    buttons->addWidget(m_cancel, 0, Qt::AlignTop);
    buttons->addWidget(m_retry, 0, Qt::AlignTop);
    auto *layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_jobs, 1);
    layout->addLayout(buttons);
    return area;
}

QWidget *SendProgressPanel::buildFailures()
{
    auto *area = new QWidget(this);
    m_failureModel =
        new SendFailureModel([](qint64 job, int first,
                                 int count) { return SendNotifier::instance()->failures(job, first, count); },
            this);
    m_failures = new PlainTableView(area);
    m_failures->setObjectName(QStringLiteral("failures"));
    m_failures->setAccessibleName(tr("Images that were not taken"));
    m_failures->setModel(m_failureModel);
    m_failures->setColumnCharacters(SendFailureModel::FileColumn, fileCharacters);
    m_failures->setPathColumn(SendFailureModel::FileColumn);
    m_failures->setColumnCharacters(SendFailureModel::DestinationColumn, destinationCharacters);
    m_failures->setMinimumHeight(visibleFailures * fontMetrics().height() * 3 / 2);
    m_reason = new DetailLabel(area);
    m_reason->setObjectName(QStringLiteral("reason"));
    connect(m_failures->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &SendProgressPanel::showDetails);
    m_failureCaption = new QLabel(area);
    m_failureCaption->setBuddy(m_failures);
    auto *layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_failureCaption);
    layout->addWidget(m_failures, 1);
    layout->addWidget(m_reason);
    return area;
}

QPushButton *SendProgressPanel::addButton(const QString &text, const QString &name, const QString &toolTip)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
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
    m_batch.update(SendNotifier::instance()->jobs(), m_time.elapsed());
    showBatch();
    showJobs();
    showFailures();
    showDetails();
    enableButtons();
    setVisible(!m_batch.isEmpty() || m_jobs->topLevelItemCount() > 0);
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

/// The latest on top. A line stays its job's, so that what is chosen is never another send than before.
void SendProgressPanel::showJobs()
{
    const SendNotifier *notifier = SendNotifier::instance();
    QHash<qint64, QTreeWidgetItem *> items;
    for (int row = m_jobs->topLevelItemCount() - 1; row >= 0; --row) {
        QTreeWidgetItem *item = m_jobs->topLevelItem(row);
        const qint64 id = jobOf(item);
        if (notifier->job(id).id == id) {
            items.insert(id, item);
        } else {
            delete item;
        }
    }
    const QVector<SentJob> &jobs = notifier->jobs();
    for (const SentJob &job : jobs) {
        QTreeWidgetItem *&item = items[job.id];
        if (!item) {
            item = new QTreeWidgetItem;
            m_jobs->insertTopLevelItem(0, item);
        }
        fillItem(item, job);
    }
    if (!m_jobs->currentItem()) {
        m_jobs->setCurrentItem(m_jobs->topLevelItem(0));
    }
    m_jobArea->setVisible(!jobs.isEmpty());
}

void SendProgressPanel::fillItem(QTreeWidgetItem *item, const SentJob &job)
{
    const auto set = [item](int column, const QString &text) {
        if (item->text(column) != text) {
            item->setText(column, text);
            item->setToolTip(column, plainToolTip(text));
        }
    };
    item->setData(DestinationColumn, jobRole, job.id);
    set(DestinationColumn, job.destination);
    set(SubjectColumn, job.subject);
    set(StateColumn, TransferText::ofState(job.state));
    set(CountColumn, TransferText::ofCounts(job.accepted, job.total, job.failed));
    QString notice = job.notice;
    if (notice.isEmpty() && job.warned > 0) {
        notice = tr("%n taken with a warning", nullptr, int(job.warned));
    } else if (notice.isEmpty() && job.skipped > 0) {
        notice = tr("%n skipped: no DICOM file", nullptr, int(job.skipped));
    }
    set(NoticeColumn, notice);
}

void SendProgressPanel::showFailures()
{
    QVector<SendFailureModel::Part> parts;
    for (const SentJob &job : SendNotifier::instance()->jobs()) {
        if (job.failed > 0) {
            parts.append({job.id, job.destination, int(job.failed), job.isOver()});
        }
    }
    m_failureModel->show(parts);
    m_failureCaption->setText(tr("N&ot taken: %1").arg(QLocale().toString(m_failureModel->rowCount())));
    m_failureArea->setVisible(!parts.isEmpty());
}

/// What the lists cut.
void SendProgressPanel::showDetails()
{
    const QTreeWidgetItem *job = m_jobs->currentItem();
    m_notice->setDetail(job ? job->text(NoticeColumn) : QString());
    const QModelIndex failure = m_failures->currentIndex();
    m_reason->setDetail(failure.isValid()
            ? failure.siblingAtColumn(SendFailureModel::ReasonColumn).data().toString()
            : QString());
}

void SendProgressPanel::enableButtons()
{
    const SendNotifier *notifier = SendNotifier::instance();
    const SentJob job = notifier->job(currentJob());
    const bool canControl = notifier->canControl();
    m_cancel->setVisible(canControl);
    m_retry->setVisible(canControl);
    m_cancel->setEnabled(job.id > 0 && !job.isOver());
    m_retry->setEnabled(job.id > 0 && job.failed > 0);
}

qint64 SendProgressPanel::currentJob() const
{
    return jobOf(m_jobs->currentItem());
}
