#pragma once

#include "retrieval.h"

#include <QObject>
#include <QTimer>

#include <memory>

class ReceiveService;
class RetrievalWork;

/**
 * Brings what is chosen in archives into the index that is open, one after another in the order of asking.
 *
 * Objects go through the spool of the receive service, so what has come is never lost; what has not is not
 * asked for again after the program's end. closeIndex() cancels what is left. GUI thread; closeIndex() and
 * the destructor wait for milliseconds.
 */
class RetrievalService : public QObject
{
    Q_OBJECT

public:
    /// @param receiving outlives the service
    explicit RetrievalService(ReceiveService *receiving, QObject *parent = nullptr);
    ~RetrievalService() override;

    void enqueue(const QVector<Retrieval> &retrievals);
    const QVector<Retrieval> &retrievals() const { return m_retrievals; }
    bool isRunning() const { return m_work != nullptr; }
    /// Before the index goes: nothing is asked for any more.
    void closeIndex();

public slots:
    /// The archive is asked to end; what has come stays.
    void cancel(qint64 id);
    /// Again from the start: what is there already is noticed.
    void retry(qint64 id);
    /// Forgets what is over.
    void removeEnded();

signals:
    /// retrievals() is another one; a few times a second at most.
    void changed();

private:
    Retrieval *find(qint64 id);
    void next();
    void endAll(const QString &spoolProblem);
    void look();

    ReceiveService *const m_receiving;
    QVector<Retrieval> m_retrievals;
    qint64 m_lastId = 0;
    std::unique_ptr<RetrievalWork> m_work; ///< what runs
    QTimer m_timer;
};
