#include "receivejournal.h"

#include <QFileInfo>

namespace {

constexpr qint64 largestFile = 1 << 20;
constexpr int longestField = 200;

const char *nameOf(ReceiveProblem problem)
{
    switch (problem) {
    case ReceiveProblem::None:
        break;
    case ReceiveProblem::UnknownCaller:
        return "unknown-caller";
    case ReceiveProblem::WrongCalledTitle:
        return "wrong-called-title";
    case ReceiveProblem::Busy:
        return "busy";
    case ReceiveProblem::DiskFull:
        return "disk-full";
    case ReceiveProblem::WriteFailed:
        return "write-failed";
    case ReceiveProblem::BadRequest:
        return "bad-request";
    case ReceiveProblem::OtherObject:
        return "other-object";
    case ReceiveProblem::NotReadable:
        return "not-readable";
    case ReceiveProblem::LineLost:
        return "line-lost";
    case ReceiveProblem::OtherContentKept:
        return "other-content-kept";
    case ReceiveProblem::IndexFailed:
        return "index-failed";
    }
    return "none";
}

/// What a peer said must not break the lines, nor the terminal that shows them.
QByteArray field(const QString &text)
{
    QString safe = text.left(longestField);
    for (QChar &c : safe) {
        if (!c.isPrint()) {
            c = QLatin1Char('?');
        }
    }
    return safe.isEmpty() ? QByteArray("-") : safe.toUtf8();
}

} // namespace

ReceiveJournal::ReceiveJournal(const QString &file)
    : m_path(file)
{ }

ReceiveCounts ReceiveJournal::counts() const
{
    const std::lock_guard lock(m_mutex);
    return m_counts;
}

void ReceiveJournal::countReceived()
{
    const std::lock_guard lock(m_mutex);
    ++m_counts.received;
}

void ReceiveJournal::countIndexed(qint64 objects)
{
    const std::lock_guard lock(m_mutex);
    m_counts.indexed += objects;
}

void ReceiveJournal::countKeptAside()
{
    const std::lock_guard lock(m_mutex);
    ++m_counts.keptAside;
}

void ReceiveJournal::addAssociations(int number)
{
    const std::lock_guard lock(m_mutex);
    m_counts.associations += number;
}

void ReceiveJournal::note(ReceiveEvent event, bool refused)
{
    event.time = QDateTime::currentDateTime();
    const std::lock_guard lock(m_mutex);
    m_counts.refused += refused ? 1 : 0;
    m_counts.lastProblem = event;
    write(event);
}

void ReceiveJournal::write(const ReceiveEvent &event)
{
    if (m_path.isEmpty()) {
        return;
    }
    if (QFileInfo(m_path).size() > largestFile) {
        const QString before = m_path + QStringLiteral(".1");
        QFile::remove(before);
        QFile::rename(m_path, before);
    }
    QFile file(m_path);
    if (file.open(QIODevice::Append)) {
        file.write(event.time.toString(Qt::ISODate).toLatin1() + '\t' + nameOf(event.problem) + '\t'
            + field(event.peer) + '\t' + field(event.sopInstanceUid) + '\t' + field(event.detail) + '\n');
    }
}
