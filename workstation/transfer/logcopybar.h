#pragma once

#include "sendlogcopy.h"

#include <QWidget>

class PlainTableView;
class QLabel;
class QPushButton;

/**
 * Copies a job's log, or the rows of it that are selected, to the clipboard: a button, which ends a copy that
 * goes on, and what there is to say of it. Also answers the copying of the list itself. GUI thread.
 */
class LogCopyBar : public QWidget
{
    Q_OBJECT

public:
    /// @param storePath of the service that has the jobs @param list shows the log; outlives the bar
    /// @param mostLines more than that is not copied
    LogCopyBar(const QString &storePath, PlainTableView *list, QWidget *parent = nullptr,
        int mostLines = SendLogCopy::mostLines);

    /// What the list shows now; another log ends the copy of the one before.
    void setLog(qint64 job, bool onlyFailed, int length);

public slots:
    void copy();
    void stop();

private:
    void build();
    void onEnded(const CopiedLog &copied);
    void showState(const QString &text);
    int chosenLines() const;

    PlainTableView *const m_list;
    SendLogCopy *const m_copy;
    QLabel *const m_state;
    QPushButton *const m_copyButton;
    QPushButton *const m_stopButton;
    SendLogPart m_part;
    int m_length = 0;
    int m_wanted = 0; ///< lines of the copy that goes on
};
