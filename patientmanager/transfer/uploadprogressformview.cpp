// What the upload window shows of its uploads, and which of its buttons can be pressed.
#include "uploadprogressform.h"

#include "ui_uploadprogressform.h"

#include "folderfiles.h"
#include "uploadfailuremodel.h"
#include "uploadrows.h"
#include "uploadtask.h"
#include "uploadtext.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLocale>
#include <QScrollBar>

#include <algorithm>
#include <iterator>

namespace {

constexpr int updateMs = 200;
constexpr int updateCostFactor = 9; ///< at most a tenth of the time goes into updates
constexpr int readMs = 30; ///< of the failures of several uploads, at once

} // namespace

void UploadProgressForm::showUploads()
{
    QElapsedTimer cost;
    cost.start();
    updateSummary();
    updateFailures();
    enableButtons();
    m_update.setInterval(std::max(updateMs, int(cost.elapsed()) * updateCostFactor));
}

void UploadProgressForm::updateSummary()
{
    UploadTally sum;
    bool needsSession = false;
    for (const UpLoadTask *task : qAsConst(m_tasks)) {
        const UploadTally tally = task->tally();
        needsSession = needsSession || tally.state == UploadTally::State::NeedsSession;
        sum.all += tally.all;
        sum.succeeded += tally.succeeded;
        sum.bytesAll += tally.bytesAll;
        sum.bytesDone += tally.bytesDone;
        sum.bytesPerSecond += tally.bytesPerSecond;
    }
    sum.state = UploadTally::State::Running;
    const QString rate = isUploading() ? UploadText::ofRate(sum) : QString();
    QString text = tr("Stored: %1").arg(UploadText::ofProgress(sum));
    if (!rate.isEmpty()) {
        text += QStringLiteral(" – ") + rate;
    }
    ui->headline->setText(m_tasks.isEmpty() ? tr("Nothing is being uploaded.") : text);
    ui->signInPanel->setVisible(needsSession);
}

/// Each upload's are a read of the index: where they are many, some wait for the next update.
void UploadProgressForm::readFailures()
{
    QElapsedTimer time;
    time.start();
    QVector<UploadFailureModel::Part> changed;
    for (const UpLoadTask *task : qAsConst(m_tasks)) {
        if (task->tally().failed == m_failures->count(task->number())) {
            continue;
        }
        if (time.elapsed() > readMs) {
            m_update.start();
            break;
        }
        changed.append({task->number(), task->patientName(), task->faults()});
    }
    if (!changed.isEmpty()) {
        m_failures->setParts(changed);
    }
}

void UploadProgressForm::updateFailures()
{
    const QModelIndex chosen = ui->failures->currentIndex();
    const QString path = chosen.siblingAtColumn(UploadFailureModel::FileColumn).data().toString();
    const int place = ui->failures->verticalScrollBar()->value();
    readFailures();
    if (chosen.isValid() && !ui->failures->currentIndex().isValid()) {
        ui->failures->selectRow(m_failures->rowOf(QDir::fromNativeSeparators(path)));
        ui->failures->verticalScrollBar()->setValue(place);
    }
    const int count = m_failures->rowCount();
    ui->failuresCaption->setText(tr("N&ot stored: %1").arg(QLocale().toString(count)));
    ui->failuresPanel->setVisible(count > 0);
    showDetails();
}

/// What the lists cut.
void UploadProgressForm::showDetails()
{
    const UpLoadTask *task = chosenTask();
    const bool isInTrouble = task && task->tally().state == UploadTally::State::Retrying;
    ui->stateDetail->setDetail(isInTrouble ? UploadText::ofState(task->tally()) : QString());
    const QModelIndex failure = ui->failures->currentIndex();
    ui->reason->setDetail(failure.isValid()
            ? failure.siblingAtColumn(UploadFailureModel::ReasonColumn).data().toString()
            : QString());
}

UpLoadTask *UploadProgressForm::chosenTask() const
{
    const QModelIndex current = ui->tableView->currentIndex();
    return current.isValid() ? m_tasks.value(current.data(UploadRows::TaskRole).toInt()) : nullptr;
}

QList<UpLoadTask *> UploadProgressForm::failedTasks() const
{
    QList<UpLoadTask *> failed;
    std::copy_if(m_tasks.begin(), m_tasks.end(), std::back_inserter(failed),
        [](const UpLoadTask *task) { return task->tally().failed > 0; });
    return failed;
}

void UploadProgressForm::enableButtons()
{
    ui->selectFloders->setEnabled(!m_folder->isRunning());
    ui->retry->setEnabled(!failedTasks().isEmpty());
    ui->cancelUpload->setEnabled(chosenTask() != nullptr);
}
