#pragma once

#include "patientsearch.h"

#include <QElapsedTimer>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <memory>
#include <optional>

/**
 * Answers questions over all patients of an index without ever making the GUI wait.
 *
 * Reads the index into memory on a thread of its own, when somebody asks or prepare() says so, and answers on
 * another one; the latest question wins. While a question is in force the index is read again after every
 * change of it, and the question is answered anew; without one a change costs nothing until the next
 * question, which is answered from what is known and then again. GUI thread; the destructor ends what runs.
 */
class PatientFinder : public QObject
{
    Q_OBJECT

public:
    explicit PatientFinder(QString databasePath, QObject *parent = nullptr);
    ~PatientFinder() override;

    /// Reads the index, unless it has been read since its last change.
    void prepare();
    /// Replaces the question in force.
    void ask(const PatientQuestion &question);
    /// No question is in force any more; answered() is not sent for the last one.
    void forget();
    /// Whether a question has not had an answer yet.
    bool isAwaited() const { return m_question && !m_wasAnswered; }
    /// What is known of the index; null before it has been read.
    std::shared_ptr<const PatientSearch> known() const { return m_search; }

public slots:
    void onIndexChanged();

signals:
    /// @param keys of the patients that the question in force finds, in rising order
    /// @param isFirst false where it has been answered before and the index has changed since
    void answered(const std::vector<qint64> &keys, bool isFirst);
    /// The index has been read.
    void prepared();
    /// The index could not be read; while a question is in force it is tried again after a pause.
    void unreadable();

private:
    void readSoon();
    void read();
    void onRead(const std::shared_ptr<const PatientSearch> &search, qint64 milliseconds);
    void answer();
    void onAnswer(const std::vector<qint64> &keys);

    const QString m_databasePath;
    QThreadPool m_threads;
    std::atomic<bool> m_stop{false};
    std::shared_ptr<const PatientSearch> m_search;
    std::optional<PatientQuestion> m_question;
    QTimer m_readTimer;
    QElapsedTimer m_sinceRead;
    qint64 m_readPauseMs = 0;
    bool m_isStale = true; ///< the index has changed since it was read, or was never read
    bool m_isReading = false;
    bool m_isAnswering = false;
    bool m_answerDue = false;
    bool m_wasAnswered = false; ///< the question in force
};
