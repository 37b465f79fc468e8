#include "sendlogcopy.h"

#include "sendlog.h"
#include "sendlogmodel.h"

#include <QElapsedTimer>

namespace {

constexpr int tellMs = 200;

/// Goes through ranges along with the rows of the log.
class WantedRows
{
public:
    explicit WantedRows(const QVector<QPair<int, int>> &ranges)
        : m_ranges(ranges)
    { }

    /// @param row greater than in the call before
    bool contains(int row)
    {
        while (m_next < m_ranges.size() && m_ranges[m_next].second < row) {
            ++m_next;
        }
        return m_ranges.isEmpty() || (m_next < m_ranges.size() && m_ranges[m_next].first <= row);
    }
    /// Whether no row from the last one on is wanted.
    bool isOver() const { return !m_ranges.isEmpty() && m_next == m_ranges.size(); }

private:
    const QVector<QPair<int, int>> &m_ranges;
    int m_next = 0;
};

} // namespace

SendLogCopy::SendLogCopy(QObject *parent, int most)
    : QObject(parent)
    , m_most(most)
{ }

SendLogCopy::~SendLogCopy()
{
    stop();
}

void SendLogCopy::stop()
{
    ++m_number;
    m_stop = true;
    if (m_worker.joinable()) {
        m_worker.join();
    }
    m_stop = false;
    m_isRunning = false;
}

void SendLogCopy::begin(const SendLogPart &part)
{
    stop();
    m_isRunning = true;
    m_worker = std::thread([this, part, number = m_number] {
        const CopiedLog copied = read(part, number);
        QMetaObject::invokeMethod(
            this,
            [this, copied, number] {
                if (number == m_number) {
                    m_isRunning = false;
                    emit ended(copied);
                }
            },
            Qt::QueuedConnection);
    });
}

/// On the worker's thread.
CopiedLog SendLogCopy::read(const SendLogPart &part, int number)
{
    CopiedLog copied;
    WantedRows wanted(part.rows);
    QElapsedTimer sinceTold;
    sinceTold.start();
    int row = -1;
    const SendLog log(part.storePath);
    copied.isRead = log.visit(part.job, part.onlyFailed, [&](const SendObject &object) {
        const bool isWanted = wanted.contains(++row);
        copied.isCutOff = isWanted && copied.lines == m_most;
        if (m_stop || copied.isCutOff || wanted.isOver()) {
            return false;
        }
        if (isWanted) {
            copied.text += SendLogModel::lineOf(object);
            ++copied.lines;
        }
        if (sinceTold.hasExpired(tellMs)) {
            sinceTold.start();
            tellProgress(copied.lines, number);
        }
        return true;
    });
    return copied;
}

void SendLogCopy::tellProgress(int lines, int number)
{
    QMetaObject::invokeMethod(
        this,
        [this, lines, number] {
            if (number == m_number) {
                emit progress(lines);
            }
        },
        Qt::QueuedConnection);
}
