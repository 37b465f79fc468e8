#include "transferswindow.h"

#include "companionwindow.h"
#include "detaillabel.h"
#include "firstwindowsize.h"
#include "logcopybar.h"
#include "plaintableview.h"
#include "progressdelegate.h"
#include "sendjobmodel.h"
#include "sendlogmodel.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize firstSize{1120, 640};
constexpr int tickMs = 1000;

int logLength(const SendJob &job, bool onlyFailed)
{
    return int(onlyFailed ? job.failed : job.total);
}

} // namespace

TransfersWindow::TransfersWindow(SendService *service, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_service(service)
{
    build();
    closeOnEscape(this);
    connect(service, &SendService::changed, this, &TransfersWindow::update);
    m_tick.setInterval(tickMs);
    connect(&m_tick, &QTimer::timeout, this, &TransfersWindow::tick);
    m_tick.start();
    update();
}

void TransfersWindow::build()
{
    setObjectName(QStringLiteral("TransfersWindow"));
    setWindowTitle(tr("Transfers"));
    resize(firstWindowSize(this, firstSize));
    m_problem = new QLabel(this);
    m_problem->setObjectName(QStringLiteral("problem"));
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    auto *parts = new QSplitter(Qt::Vertical, this);
    parts->setChildrenCollapsible(false);
    parts->addWidget(buildJobs());
    parts->addWidget(buildLog());
    auto *hint = new QLabel(tr("What is not sent when the program ends goes on at its next start. Finished "
                               "transfers are forgotten "
                               "after a week."),
        this);
    hint->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_problem);
    layout->addWidget(parts, 1);
    layout->addWidget(hint);
}

QWidget *TransfersWindow::buildJobs()
{
    auto *area = new QWidget(this);
    m_model = new SendJobModel(this);
    m_jobs = new PlainTableView(area);
    m_jobs->setObjectName(QStringLiteral("jobs"));
    m_jobs->setAccessibleName(tr("Transfers"));
    m_jobs->setModel(m_model);
    m_jobs->setEmptyText(tr("Nothing is being sent, and nothing has been in the last week."));
    m_jobs->setItemDelegateForColumn(
        SendJobModel::ProgressColumn, new ProgressDelegate(SendJobModel::shareRole, m_jobs));
    m_jobs->setColumnCharacters(SendJobModel::DestinationColumn, 24);
    m_jobs->setColumnCharacters(SendJobModel::SourceColumn, 20);
    m_jobs->setColumnCharacters(SendJobModel::ProgressColumn, 9);
    m_jobs->setColumnCharacters(SendJobModel::NoticeColumn, 40);
    for (const int column : {SendJobModel::StateColumn, SendJobModel::CountColumn}) {
        m_jobs->horizontalHeader()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
    }
    connect(m_jobs->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        enableButtons();
        showLog();
    });
    connect(m_jobs->selectionModel(), &QItemSelectionModel::currentChanged, this, &TransfersWindow::showLog);
    m_notice = new DetailLabel(area);
    m_notice->setObjectName(QStringLiteral("notice"));
    auto *caption = new QLabel(tr("&Transfers:"), area);
    caption->setBuddy(m_jobs);
    auto *layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(caption);
    layout->addWidget(m_jobs, 1);
    layout->addWidget(m_notice);
    layout->addLayout(buildJobButtons());
    return area;
}

QLayout *TransfersWindow::buildJobButtons()
{
    auto *layout = new QHBoxLayout;
    addJobButton(layout, QStringLiteral("pause"), tr("&Pause"), tr("Send nothing more for now"),
        &SendService::pause,
        [](const SendJob &job) { return !job.isOver() && job.state != SendJobState::Paused; });
    addJobButton(layout, QStringLiteral("resume"), tr("&Resume"), tr("Go on with what was paused"),
        &SendService::resume, [](const SendJob &job) { return job.state == SendJobState::Paused; });
    addJobButton(layout, QStringLiteral("retry"), tr("Retr&y"),
        tr("Send again what failed, and try at once a destination that did not answer"),
        &SendService::retryFailed,
        [](const SendJob &job) { return job.failed > 0 || (!job.isOver() && job.nextTry.isValid()); });
    addJobButton(layout, QStringLiteral("cancel"), tr("&Cancel Transfer"),
        tr("Send no more of it; what the destination has taken stays there"), &SendService::cancel,
        [](const SendJob &job) { return !job.isOver(); });
    addJobButton(layout, QStringLiteral("remove"), tr("Re&move"), tr("Take it off this list, with its log"),
        &SendService::remove, [](const SendJob &job) { return job.isOver(); });
    layout->addStretch();
    m_removeFinished = addButton(layout, QStringLiteral("removeFinished"), tr("Remove &Finished"),
        tr("Take all that ended without failures off this list"));
    connect(m_removeFinished, &QPushButton::clicked, this, &TransfersWindow::removeFinished);
    return layout;
}

void TransfersWindow::addJobButton(QLayout *layout, const QString &name, const QString &text,
    const QString &toolTip, Request request, Condition condition)
{
    QPushButton *button = addButton(layout, name, text, toolTip);
    m_jobButtons.append({button, condition});
    connect(button, &QPushButton::clicked, this, [this, request, condition] {
        const QVector<SendJob> jobs = chosenJobs();
        for (const SendJob &job : jobs) {
            if (condition(job)) {
                (m_service->*request)(job.id);
            }
        }
    });
}

QPushButton *TransfersWindow::addButton(
    QLayout *layout, const QString &name, const QString &text, const QString &toolTip)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    layout->addWidget(button);
    return button;
}

QWidget *TransfersWindow::buildLog()
{
    auto *area = new QWidget(this);
    m_logModel = new SendLogModel(this);
    m_log = new PlainTableView(area);
    m_log->setObjectName(QStringLiteral("log"));
    m_log->setAccessibleName(tr("Objects of the transfer"));
    m_log->setModel(m_logModel);
    m_log->setEmptyText(tr("The objects of the chosen transfer are listed here."));
    m_log->setPathColumn(SendLogModel::FileColumn);
    m_log->setColumnCharacters(SendLogModel::FileColumn, 44);
    m_log->setColumnCharacters(SendLogModel::StateColumn, 18);
    m_log->setColumnCharacters(SendLogModel::ReasonColumn, 40);
    m_log->setColumnCharacters(SendLogModel::AttemptsColumn, 10);
    m_log->setColumnCharacters(SendLogModel::TimeColumn, 22);
    m_reason = new DetailLabel(area);
    m_reason->setObjectName(QStringLiteral("reason"));
    connect(
        m_log->selectionModel(), &QItemSelectionModel::currentChanged, this, &TransfersWindow::showDetails);
    m_logCaption = new QLabel(tr("&Objects:"), area);
    m_logCaption->setBuddy(m_log);
    m_onlyFailed = new QCheckBox(tr("O&nly failed ones"), area);
    m_onlyFailed->setObjectName(QStringLiteral("onlyFailed"));
    connect(m_onlyFailed, &QCheckBox::toggled, this, &TransfersWindow::showLog);
    auto *head = new QHBoxLayout;
    head->addWidget(m_logCaption, 1);
    head->addWidget(m_onlyFailed);
    m_copy = new LogCopyBar(m_service->storePath(), m_log, area);
    auto *layout = new QVBoxLayout(area);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(m_log, 1);
    layout->addWidget(m_reason);
    layout->addWidget(m_copy);
    return area;
}

void TransfersWindow::showEvent(QShowEvent *event)
{
    update();
    QWidget::showEvent(event);
}

/// Only in sight: a job of a hundred thousand objects tells of itself several times a second.
void TransfersWindow::update()
{
    if (!isVisible() && m_model->rowCount() > 0) {
        return;
    }
    m_model->setJobs(m_service->jobs());
    if (!m_jobs->selectionModel()->hasSelection() && m_model->rowCount() > 0) {
        const int row = qMax(0, m_jobs->currentIndex().row()); // the focus makes a line current, not chosen
        m_jobs->selectionModel()->setCurrentIndex(
            m_model->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    const QString problem = m_service->storeProblem();
    m_problem->setText(tr("The transfers cannot be kept on the disk: %1").arg(problem));
    m_problem->setVisible(!problem.isEmpty());
    enableButtons();
    showLog();
}

void TransfersWindow::showLog()
{
    const SendJob job = m_service->job(currentJob());
    const bool onlyFailed = m_onlyFailed->isChecked();
    const int length = logLength(job, onlyFailed);
    if (job.id != m_loggedJob || onlyFailed != m_loggedOnlyFailed) {
        m_loggedJob = job.id;
        m_loggedOnlyFailed = onlyFailed;
        m_logModel->show([service = m_service, id = job.id, onlyFailed](
                             int first, int count) { return service->objects(id, first, count, onlyFailed); },
            length);
    } else {
        m_logModel->refresh(length);
    }
    m_copy->setLog(job.id, onlyFailed, length);
    showDetails();
}

/// What the lists cut.
void TransfersWindow::showDetails()
{
    const QModelIndex job = m_jobs->currentIndex();
    m_notice->setDetail(job.siblingAtColumn(SendJobModel::NoticeColumn).data().toString());
    const QModelIndex object = m_log->currentIndex();
    m_reason->setDetail(object.siblingAtColumn(SendLogModel::ReasonColumn).data().toString());
}

/// Rates fall while nothing is taken.
void TransfersWindow::tick()
{
    const QVector<SendJob> &jobs = m_service->jobs();
    const auto runs = [](const SendJob &job) { return !job.isOver(); };
    if (isVisible() && std::any_of(jobs.begin(), jobs.end(), runs)) {
        m_model->setJobs(jobs);
    }
}

void TransfersWindow::enableButtons()
{
    const QVector<SendJob> jobs = chosenJobs();
    for (const JobButton &entry : qAsConst(m_jobButtons)) {
        entry.button->setEnabled(std::any_of(jobs.begin(), jobs.end(), entry.condition));
    }
    const QVector<SendJob> &all = m_service->jobs();
    m_removeFinished->setEnabled(std::any_of(
        all.begin(), all.end(), [](const SendJob &job) { return job.isOver() && job.failed == 0; }));
}

void TransfersWindow::removeFinished()
{
    const QVector<SendJob> all = m_service->jobs();
    for (const SendJob &job : all) {
        if (job.isOver() && job.failed == 0) {
            m_service->remove(job.id);
        }
    }
}

QVector<SendJob> TransfersWindow::chosenJobs() const
{
    QVector<SendJob> jobs;
    const QModelIndexList rows = m_jobs->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows) {
        jobs.append(m_model->job(row.row()));
    }
    return jobs;
}

qint64 TransfersWindow::currentJob() const
{
    const QModelIndex current = m_jobs->currentIndex();
    return current.isValid() ? m_model->job(current.row()).id : 0;
}
