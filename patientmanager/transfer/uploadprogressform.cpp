#include "uploadprogressform.h"

#include "ui_uploadprogressform.h"

#include "cloudclientasynchandler.h"
#include "companionwindow.h"
#include "folderfiles.h"
#include "httpuploadfile.h"
#include "sharedwindow.h"
#include "uploadedstates.h"
#include "uploadfailuremodel.h"
#include "uploadrows.h"
#include "uploadtask.h"

#include <QCloseEvent>

#include <algorithm>

namespace {

/// Of the upload made last; never given twice, so that a row is its upload's for good.
int lastNumber = 0;

UploadAccess accessOf(const HttpUploadFile &client)
{
    UploadAccess access;
    access.jsessionid = client.getJsessionid();
    access.proxyUrl = client.getProxyURL().toUtf8();
    access.proxyType = client.getProxyType().toUtf8();
    access.proxyUser = client.getProxyUser().toUtf8();
    access.proxyPassword = client.getProxyPassword().toUtf8();
    access.assistUrl = client.getAssistUrl().toUtf8();
    return access;
}

/// Whether all that has failed of an upload is among these files.
bool isTriedAnew(const UpLoadTask &task, const QSet<QString> &paths)
{
    const QVector<UploadFault> faults = task.faults();
    return std::all_of(faults.begin(), faults.end(),
        [&paths](const UploadFault &fault) { return paths.contains(fault.path); });
}

QStringList rowOf(const UpLoadTask &task, const QString &name, int files, int succeeded, int failed)
{
    return {QString::number(task.number()), name, QString::number(files), QString::number(succeeded),
        QString::number(failed)};
}

} // namespace

UploadProgressForm *UploadProgressForm::instance()
{
    return sharedWindow<UploadProgressForm>([] { return new UploadProgressForm(nullptr); });
}

/// The handles go with the window; the uploads go on.
UploadProgressForm::~UploadProgressForm()
{
    for (UpLoadTask *task : qAsConst(m_tasks)) {
        task->disconnect(this);
    }
}

CloudClientAsyncHandler &UploadProgressForm::handler()
{
    if (!m_client) {
        m_client = HttpUploadFile::instance();
        m_handler = m_client->newClientAsyncHandler();
    }
    return *m_handler;
}

/// An upload that has not ended keeps its series to itself. One that has gives way, and so does one that can
/// do no more since the rest has failed, where all of that is tried anew: no failure is lost from sight.
bool UploadProgressForm::makeRoomFor(const QStringList &seriesUIDs, const QStringList &filePaths)
{
    const QSet<QString> wanted(seriesUIDs.begin(), seriesUIDs.end());
    const QSet<QString> paths(filePaths.begin(), filePaths.end());
    const QVector<QStringList> rows = m_rows->getSeriesUIDData();
    QVector<int> done;
    for (int row = 0; row < rows.size(); ++row) {
        const bool isConcerned = std::any_of(rows[row].begin(), rows[row].end(),
            [&wanted](const QString &series) { return wanted.contains(series); });
        const int number = m_rows->index(row, 0).data(UploadRows::TaskRole).toInt();
        const UpLoadTask *task = isConcerned ? m_tasks.value(number) : nullptr;
        if (task && task->tally().state != UploadTally::State::Finished) {
            return false;
        }
        if (isConcerned && (!task || isTriedAnew(*task, paths))) {
            done.append(number);
        }
    }
    for (const int number : qAsConst(done)) {
        if (UpLoadTask *task = m_tasks.value(number)) {
            task->finishTask();
        }
        m_rows->removeTask(number);
    }
    return true;
}

void UploadProgressForm::setUploadFiles(const QStringList &seriesUIDs, const QStringList &sopInstanceUIDs,
    const QStringList &filePaths, const QString &patientName, const QByteArray &userId)
{
    Q_UNUSED(userId)
    if (!makeRoomFor(seriesUIDs, filePaths)) {
        return;
    }
    if (!m_hasBeenAsked) {
        m_hasBeenAsked = true;
        bringUp(this);
    }
    CloudClientAsyncHandler &maker = handler();
    UpLoadTask *task = maker.newUpLoadTask(seriesUIDs, sopInstanceUIDs, filePaths, accessOf(*m_client));
    follow(task, patientName);
    connectProgress(task);
    addRow(task, rowOf(*task, patientName, filePaths.size(), 0, 0), seriesUIDs);
}

UpLoadTask *UploadProgressForm::newTask(const QStringList &paths)
{
    CloudClientAsyncHandler &maker = handler();
    return maker.newUpLoadTask(paths, accessOf(*m_client));
}

void UploadProgressForm::uploadFiles(const QStringList &paths, const QString &name)
{
    UpLoadTask *task = newTask(paths);
    follow(task, name);
    connectProgress(task);
    addRow(task, rowOf(*task, name, paths.size(), 0, 0), {});
    bringUp(this);
}

void UploadProgressForm::resumeUploads()
{
    CloudClientAsyncHandler &maker = handler();
    const QVector<UpLoadTask *> unfinished = maker.unfinished(accessOf(*m_client));
    for (UpLoadTask *task : unfinished) {
        const UploadTally tally = task->tally();
        follow(task, task->patientName());
        connectProgress(task);
        addRow(task, rowOf(*task, task->patientName(), tally.all, tally.succeeded, tally.failed),
            task->seriesUIDs());
    }
}

void UploadProgressForm::follow(UpLoadTask *task, const QString &name)
{
    m_current = task;
    task->setParent(this);
    task->setNumber(++lastNumber);
    if (task->patientName() != name) {
        task->setPatientName(name);
    }
    m_tasks.insert(task->number(), task);
    connect(task, &UpLoadTask::finshUpLoad, this, &UploadProgressForm::onFinshUpLoad);
    connect(task, &UpLoadTask::finshUpLoad, this, [this, task] { refreshStates(task); });
    connect(task, &UpLoadTask::finshTask, this, &UploadProgressForm::onFinshTask);
    connect(task, &UpLoadTask::changed, this, &UploadProgressForm::onChanged);
}

/// For all but a folder that the user chose, whose row keeps the counts that it began with: how it goes is
/// told by the columns behind.
void UploadProgressForm::connectProgress(UpLoadTask *task)
{
    // The first failure sets the bar up; where several come at once, it is told before them.
    connect(
        task, &UpLoadTask::progress, this, [this](int failed, int succeeded, int all, UpLoadTask *ofTask) {
            if (failed > 1 && !m_hasFailed.contains(ofTask->number())) {
                onProgress(1, succeeded, all, ofTask);
            }
        });
    connect(task, &UpLoadTask::progress, this, &UploadProgressForm::onProgress);
}

void UploadProgressForm::addRow(UpLoadTask *task, const QStringList &texts, const QStringList &seriesUIDs)
{
    m_rows->addSeriesUIDList(seriesUIDs);
    m_rows->addRow(texts);
    m_rows->setTally(task->number(), task->tally());
    resetView();
    const int row = m_rows->rowOf(task->number());
    ui->tableView->selectRow(row);
    ui->tableView->scrollTo(m_rows->index(row, 0));
    showUploads();
}

void UploadProgressForm::onProgress(int failed, int succeeded, int all, UpLoadTask *task)
{
    if (failed == 1) {
        m_hasFailed.insert(task->number());
        ui->progressBar->setRange(0, all);
    }
    ui->progressBar->setValue(failed);
    ui->progressBar->setFormat(failed > 0 ? tr("Failed: %1 of %2").arg(failed).arg(all) : QString());
    m_rows->updateRow(rowOf(*task, task->patientName(), all, succeeded, failed));
}

void UploadProgressForm::onFinshUpLoad(
    int failed, int succeeded, const QStringList &failedPaths, const QByteArray &sessionId)
{
    Q_UNUSED(succeeded)
    Q_UNUSED(failedPaths)
    Q_UNUSED(sessionId)
    ui->progressBar->setValue(failed);
}

void UploadProgressForm::onFinshTask(UpLoadTask *task)
{
    m_tasks.remove(task->number());
    m_begun.remove(task->number());
    m_rows->setTally(task->number(), task->tally());
    m_failures->setParts({{task->number(), {}, {}}});
    refreshStates(task);
    task->deleteLater();
    showUploads();
}

void UploadProgressForm::onChanged(UpLoadTask *task)
{
    const UploadTally tally = task->tally();
    m_rows->setTally(task->number(), tally);
    if (tally.state != UploadTally::State::Listing && !m_begun.contains(task->number())) {
        m_begun.insert(task->number());
        refreshStates(task);
    }
    if (!m_update.isActive()) {
        m_update.start();
    }
}

void UploadProgressForm::refreshStates(UpLoadTask *task)
{
    m_states->refresh(task->seriesUIDs());
}

void UploadProgressForm::deleteUploadTask()
{
    if (m_current) {
        m_current->finishTask();
    }
}

void UploadProgressForm::setUploadedCloudflag()
{
    if (m_current) {
        m_current->setUploadedCloudflag(true);
    }
}

bool UploadProgressForm::isUploading() const
{
    return std::any_of(m_tasks.begin(), m_tasks.end(), [](const UpLoadTask *task) {
        const UploadTally::State state = task->tally().state;
        return state == UploadTally::State::Listing || state == UploadTally::State::Running
            || state == UploadTally::State::Retrying;
    });
}

void UploadProgressForm::closeEvent(QCloseEvent *event)
{
    event->ignore();
    hide();
}
