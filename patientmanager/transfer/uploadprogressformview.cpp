// What the upload window shows of its uploads, and which of its buttons can be pressed.
#include "uploadprogressform.h"

#include "ui_uploadprogressform.h"

#include "focuscare.h"
#include "folderfiles.h"
#include "uploadfailuremodel.h"
#include "uploadrows.h"
#include "uploadtask.h"
#include "uploadtext.h"
#include "webfailuretext.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLocale>
#include <QScrollBar>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <utility>

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
    updateNotices();
    updateFailures();
    enableButtons();
    m_update.setInterval(std::max(updateMs, int(cost.elapsed()) * updateCostFactor));
}

void UploadProgressForm::updateSummary()
{
    UploadTally sum;
    for (const UpLoadTask *task : qAsConst(m_tasks)) {
        const UploadTally tally = task->tally();
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
}

/// What the uploads wait for.
void UploadProgressForm::updateNotices()
{
    bool needsSession = false;
    UploadTally away;
    for (const UpLoadTask *task : qAsConst(m_tasks)) {
        const UploadTally tally = task->tally();
        needsSession = needsSession || tally.state == UploadTally::State::NeedsSession;
        const bool isSooner = away.nextTryMs == 0 || tally.nextTryMs < away.nextTryMs;
        if (tally.state == UploadTally::State::Retrying && isSooner) {
            away = tally;
        }
    }
    ui->signInPanel->setVisible(needsSession);
    if (!std::exchange(m_needsSession, needsSession) && needsSession) {
        comeForward();
    }
    if (away.trouble.isNone()) {
        ui->retryNotice->clear();
    } else {
        ui->retryNotice->showTrouble(WebFailureText::of(away.trouble), away.nextTryMs);
    }
}

/// Out from behind other windows, and not over a question that is being asked; whoever types goes on.
void UploadProgressForm::comeForward()
{
    constexpr int againMs = 200;
    if (!m_needsSession || !isVisible() || isActiveWindow()) {
        return;
    }
    if (QApplication::activeModalWidget()) {
        QTimer::singleShot(againMs, this, &UploadProgressForm::comeForward);
        return;
    }
    raise();
    QApplication::alert(this);
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

/// What the list cuts.
void UploadProgressForm::showDetails()
{
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

bool UploadProgressForm::hasEnded(int row) const
{
    const QModelIndex index = m_rows->index(row, 0);
    return index.isValid() && !m_tasks.contains(index.data(UploadRows::TaskRole).toInt());
}

void UploadProgressForm::removeEnded(int row)
{
    if (hasEnded(row)) {
        m_rows->removeTask(m_rows->index(row, 0).data(UploadRows::TaskRole).toInt());
    }
}

void UploadProgressForm::clearFinished()
{
    for (int row = m_rows->rowCount() - 1; row >= 0; --row) {
        removeEnded(row);
    }
    enableButtons();
}

void UploadProgressForm::enableButtons()
{
    bool isAnyEnded = false;
    for (int row = 0; row < m_rows->rowCount() && !isAnyEnded; ++row) {
        isAnyEnded = hasEnded(row);
    }
    m_removeRow->setEnabled(hasEnded(ui->tableView->currentIndex().row()));
    const std::initializer_list<std::pair<QWidget *, bool>> states{
        {ui->selectFloders, !m_folder->isRunning()},
        {ui->retry, !failedTasks().isEmpty()},
        {ui->cancelUpload, chosenTask() != nullptr},
        {ui->clearFinished, isAnyEnded},
    };
    for (const auto &[button, isEnabled] : states) {
        setEnabledWithCare(button, isEnabled, ui->tableView);
    }
}
