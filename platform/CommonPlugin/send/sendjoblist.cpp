#include "sendjoblist.h"

#include "detaillabel.h"
#include "listheight.h"
#include "plaintooltip.h"
#include "sendnotifier.h"
#include "transfertext.h"

#include <QHash>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int visibleJobs = 2;
constexpr int destinationCharacters = 26;
constexpr int subjectCharacters = 20;
constexpr int stateCharacters = 12;
constexpr int countCharacters = 28;
constexpr int jobRole = Qt::UserRole;
enum JobColumn { DestinationColumn, SubjectColumn, StateColumn, CountColumn, NoticeColumn };

/// 0 for no line.
qint64 jobOf(const QTreeWidgetItem *item)
{
    return item ? item->data(DestinationColumn, jobRole).toLongLong() : 0;
}

} // namespace

SendJobList::SendJobList(QWidget *parent)
    : QWidget(parent)
{
    buildTree();
    m_notice = new DetailLabel(this);
    m_notice->setObjectName(QStringLiteral("notice"));
    buildButtons();
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_notice, 1);
    buttons->addStretch();
    buttons->addWidget(m_cancel, 0, Qt::AlignTop);
    buttons->addWidget(m_retry, 0, Qt::AlignTop);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_jobs, 1);
    layout->addLayout(buttons);
}

void SendJobList::buildTree()
{
    m_jobs = new QTreeWidget(this);
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
    connect(m_jobs, &QTreeWidget::currentItemChanged, this, [this] {
        showNotice();
        enableButtons();
    });
}

void SendJobList::buildButtons()
{
    m_cancel = addButton(tr("Ca&ncel Send"), QStringLiteral("cancelSend"),
        tr("Send no more to the destination of this line; what it has taken stays there"));
    m_retry = addButton(tr("&Retry Failed"), QStringLiteral("retry"),
        tr("Send again what the destination of this line did not take"));
    SendNotifier *notifier = SendNotifier::instance();
    connect(m_cancel, &QPushButton::clicked, this,
        [this, notifier] { emit notifier->cancelRequested(currentJob()); });
    connect(m_retry, &QPushButton::clicked, this,
        [this, notifier] { emit notifier->retryRequested(currentJob()); });
}

QPushButton *SendJobList::addButton(const QString &text, const QString &name, const QString &toolTip)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

void SendJobList::update()
{
    showJobs();
    showNotice();
    enableButtons();
    setVisible(m_jobs->topLevelItemCount() > 0);
}

/// The latest on top; it is chosen in place of one that is over. A line stays its job's, so that what is
/// chosen is never another send while it goes on.
void SendJobList::showJobs()
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
    bool hasNew = false;
    for (const SentJob &job : jobs) {
        QTreeWidgetItem *&item = items[job.id];
        if (!item) {
            item = new QTreeWidgetItem;
            m_jobs->insertTopLevelItem(0, item);
            hasNew = true;
        }
        fillItem(item, job);
    }
    if (!m_jobs->currentItem() || (hasNew && notifier->job(currentJob()).isOver())) {
        m_jobs->setCurrentItem(m_jobs->topLevelItem(0));
    }
}

void SendJobList::fillItem(QTreeWidgetItem *item, const SentJob &job)
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

/// What the list cuts.
void SendJobList::showNotice()
{
    const QTreeWidgetItem *job = m_jobs->currentItem();
    m_notice->setDetail(job ? job->text(NoticeColumn) : QString());
}

void SendJobList::enableButtons()
{
    const SendNotifier *notifier = SendNotifier::instance();
    const SentJob job = notifier->job(currentJob());
    const bool canControl = notifier->canControl();
    m_cancel->setVisible(canControl);
    m_retry->setVisible(canControl);
    m_cancel->setEnabled(job.id > 0 && !job.isOver());
    m_retry->setEnabled(job.id > 0 && job.failed > 0);
}

qint64 SendJobList::currentJob() const
{
    return jobOf(m_jobs->currentItem());
}
