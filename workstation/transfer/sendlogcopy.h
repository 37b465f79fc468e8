#pragma once

#include <QObject>
#include <QPair>
#include <QVector>

#include <atomic>
#include <thread>

/// Which objects of a job's log are wanted as text.
struct SendLogPart
{
    QString storePath; ///< of the service that has the job
    qint64 job = 0;
    bool onlyFailed = false;
    /// First and last numbers in the log, counted from 0, in their order; none for all objects.
    QVector<QPair<int, int>> rows;
};

/// What became of a copy.
struct CopiedLog
{
    QString text;
    int lines = 0;
    bool isCutOff = false; ///< there are more than are taken
    bool isRead = false; ///< false where the disk refused to give all of it
};

/**
 * Reads a part of a log as lines of text, on a thread of its own and through a connection of its own, so that
 * a hundred thousand objects hold up nothing. One part at a time. GUI thread; the destructor ends the reading
 * and waits for it, for milliseconds.
 */
class SendLogCopy : public QObject
{
    Q_OBJECT

public:
    /// Lines that are taken at most: about a hundred megabytes of text.
    static constexpr int mostLines = 200'000;

    explicit SendLogCopy(QObject *parent = nullptr, int most = mostLines);
    ~SendLogCopy() override;

    /// Another part than the one that is being read takes its place.
    void begin(const SendLogPart &part);
    bool isRunning() const { return m_isRunning; }

public slots:
    /// Ends it; nothing is told any more.
    void stop();

signals:
    /// So many lines have been read; a few times a second.
    void progress(int lines);
    void ended(const CopiedLog &copied);

private:
    CopiedLog read(const SendLogPart &part, int number);
    void tellProgress(int lines, int number);

    const int m_most;
    std::atomic<bool> m_stop{false};
    bool m_isRunning = false;
    int m_number = 0; ///< of the last part
    std::thread m_worker;
};
