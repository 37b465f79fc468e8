#include "importreport.h"

#include <algorithm>
#include <numeric>

QString archiveMemberLabel(const QString &archive, const QString &member)
{
    return archive + QStringLiteral(" › ") + member;
}

void ImportReport::count(FileVerdict verdict)
{
    ++m_counts[static_cast<std::size_t>(verdict)];
}

void ImportReport::count(const ImportIssue &issue)
{
    count(issue.verdict);
    append(issue);
}

void ImportReport::append(const ImportIssue &issue)
{
    ImportIssue line = issue;
    if (issue.reason == FileReason::ArchiveEncrypted) {
        line.path = issue.archive;
        const auto same = std::find_if(m_issues.rbegin(), m_issues.rend(), [&line](const ImportIssue &other) {
            return other.reason == line.reason && other.path == line.path;
        });
        if (same != m_issues.rend()) {
            same->files += line.files;
            return;
        }
    }
    m_issues.append(line);
}

qint64 ImportReport::of(FileVerdict verdict) const
{
    return m_counts[static_cast<std::size_t>(verdict)];
}

qint64 ImportReport::found() const
{
    return std::accumulate(m_counts.begin(), m_counts.end(), qint64(0));
}

void ImportReport::add(const ImportReport &other)
{
    for (std::size_t i = 0; i < m_counts.size(); ++i) {
        m_counts[i] += other.m_counts[i];
    }
    for (const ImportIssue &issue : other.m_issues) {
        append(issue);
    }
}

QStringList ImportReport::retryPaths() const
{
    QStringList paths;
    for (const ImportIssue &issue : m_issues) {
        const bool hopeless = issue.verdict == FileVerdict::NotDicom
            || issue.verdict == FileVerdict::MediaDirectory || issue.reason == FileReason::Hidden
            || issue.reason == FileReason::LinkLoop || issue.reason == FileReason::NotARegularFile
            || issue.reason == FileReason::InsideStore || issue.reason == FileReason::OtherContentKept
            || issue.reason == FileReason::ArchiveNested || issue.reason == FileReason::ArchiveTooLarge;
        const QString &path = issue.archive.isEmpty() ? issue.path : issue.archive;
        if (!hopeless && (issue.archive.isEmpty() || !paths.contains(path))) {
            paths.append(path);
        }
    }
    return paths;
}
