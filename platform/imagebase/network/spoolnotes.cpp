#include "spoolnotes.h"

#include "objectspool.h"

#include <QFile>

void SpoolNotes::keepAside(const QByteArray &path, ReceiveProblem problem, const QString &detail) const
{
    ReceiveEvent event;
    event.problem = problem;
    event.detail = m_spool.keepAside(path) + QLatin1Char(' ') + detail;
    m_journal.countKeptAside();
    m_journal.note(event, false);
}

void SpoolNotes::keepAside(const QVector<ImportIssue> &issues, int first) const
{
    for (int at = first; at < issues.size(); ++at) {
        const ImportIssue &issue = issues[at];
        const ReceiveProblem problem = issue.reason == FileReason::OtherContentKept
            ? ReceiveProblem::OtherContentKept
            : ReceiveProblem::NotReadable;
        keepAside(QFile::encodeName(issue.path), problem, issue.detail);
    }
}

void SpoolNotes::tellWaiting(const QString &why, bool isFull) const
{
    ReceiveEvent event;
    event.problem = isFull ? ReceiveProblem::DiskFull : ReceiveProblem::IndexFailed;
    event.detail = why;
    m_journal.note(event, false);
}
