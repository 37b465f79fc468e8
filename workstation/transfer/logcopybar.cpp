#include "logcopybar.h"

#include "plaintableview.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLocale>
#include <QPushButton>

#include <algorithm>

namespace {

/// The selected rows as ranges: the list of each row would be as long as the log.
QVector<QPair<int, int>> rangesOf(const QItemSelection &selection)
{
    QVector<QPair<int, int>> ranges;
    for (const QItemSelectionRange &range : selection) {
        ranges.append({range.top(), range.bottom()});
    }
    std::sort(ranges.begin(), ranges.end());
    return ranges;
}

} // namespace

LogCopyBar::LogCopyBar(const QString &storePath, PlainTableView *list, QWidget *parent, int mostLines)
    : QWidget(parent)
    , m_list(list)
    , m_copy(new SendLogCopy(this, mostLines))
    , m_state(new QLabel(this))
    , m_copyButton(new QPushButton(tr("Copy &Log"), this))
    , m_stopButton(new QPushButton(tr("Stop Copyin&g"), this))
{
    m_part.storePath = storePath;
    build();
    list->setCopying([this] { copy(); });
    connect(m_copyButton, &QPushButton::clicked, this, &LogCopyBar::copy);
    connect(m_stopButton, &QPushButton::clicked, this, &LogCopyBar::stop);
    connect(m_copy, &SendLogCopy::ended, this, &LogCopyBar::onEnded);
    connect(m_copy, &SendLogCopy::progress, this, [this](int lines) {
        showState(
            tr("Copying: %1 of %2 objects").arg(QLocale().toString(lines), QLocale().toString(m_wanted)));
    });
}

void LogCopyBar::build()
{
    m_state->setObjectName(QStringLiteral("copyState"));
    m_state->setWordWrap(true);
    m_state->setTextFormat(Qt::PlainText);
    m_copyButton->setObjectName(QStringLiteral("copy"));
    m_copyButton->setToolTip(tr("Put the selected objects, or all where none is selected, on the clipboard"));
    m_stopButton->setObjectName(QStringLiteral("stopCopying"));
    m_stopButton->setToolTip(tr("Leave the clipboard as it is"));
    m_stopButton->setEnabled(false);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_state, 1);
    row->addWidget(m_copyButton);
    row->addWidget(m_stopButton);
}

void LogCopyBar::setLog(qint64 job, bool onlyFailed, int length)
{
    if (job != m_part.job || onlyFailed != m_part.onlyFailed) {
        stop();
        showState({});
    }
    m_part.job = job;
    m_part.onlyFailed = onlyFailed;
    m_length = length;
    m_copyButton->setEnabled(length > 0);
}

void LogCopyBar::copy()
{
    if (m_length == 0) {
        return;
    }
    m_part.rows = rangesOf(m_list->selectionModel()->selection());
    m_wanted = chosenLines();
    m_stopButton->setEnabled(true);
    showState(tr("Copying %Ln object(s)…", nullptr, m_wanted));
    m_copy->begin(m_part);
}

int LogCopyBar::chosenLines() const
{
    int lines = m_part.rows.isEmpty() ? m_length : 0;
    for (const QPair<int, int> &range : m_part.rows) {
        lines += range.second - range.first + 1;
    }
    return lines;
}

void LogCopyBar::stop()
{
    if (m_copy->isRunning()) {
        m_copy->stop();
        showState(tr("Nothing was copied"));
    }
    m_stopButton->setEnabled(false);
}

void LogCopyBar::onEnded(const CopiedLog &copied)
{
    m_stopButton->setEnabled(false);
    if (!copied.isRead) {
        showState(tr("The log cannot be read at the moment; nothing was copied"));
        return;
    }
    QGuiApplication::clipboard()->setText(copied.text);
    const QString count = tr("%Ln object(s) copied", nullptr, copied.lines);
    showState(copied.isCutOff
            ? tr("%1; no more are copied at once. Select the others to copy them, too").arg(count)
            : count);
}

void LogCopyBar::showState(const QString &text)
{
    m_state->setText(text);
    m_state->setAccessibleName(text);
}
