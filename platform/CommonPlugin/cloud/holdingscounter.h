#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QThreadPool>

#include <optional>

/**
 * Counts what the index has of studies and series, on a thread of its own and one count at a time: an index
 * that is written to changes faster than it is counted, so only the last of what is asked meanwhile follows.
 * GUI thread; the destructor waits for a count that runs.
 */
class HoldingsCounter : public QObject
{
    Q_OBJECT

public:
    explicit HoldingsCounter(QObject *parent = nullptr);

    void count(const QStringList &studyUids, const QStringList &seriesUids);

signals:
    /// Images in the index, by the UID of their study, and of their series.
    void counted(const QHash<QString, int> &studies, const QHash<QString, int> &series);

private:
    struct Question
    {
        QStringList studyUids;
        QStringList seriesUids;
    };

    void countNext();

    std::optional<Question> m_next;
    bool m_isCounting = false;
    QThreadPool m_pool; ///< waits first
};
