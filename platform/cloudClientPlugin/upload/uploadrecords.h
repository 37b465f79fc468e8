#pragma once

#include "uploadrecorder.h"

#include <QHash>
#include <QThread>

/// What uploads write into the index, on the side of those who send: outcomes are gathered, and what is to be
/// done behind a write is done here when the index has taken it. Owns the thread that writes.
class UploadRecords : public QObject
{
    Q_OBJECT

public:
    using Then = std::function<void()>;

    explicit UploadRecords(const QString &databasePath, QObject *parent = nullptr);
    /// Waits until everything has had its chance.
    ~UploadRecords() override;

    void start();
    /// Behind what was recorded before. @param then is done when the index has taken it
    void write(const UploadRecorder::Write &order, const Then &then = {});
    void record(const UploadOutcome &outcome);
    /// Hands on what was gathered, now. @param isMore whether it may still wait for some more to come
    void flush(bool isMore = false);

    bool isRefusing() const { return m_isRefusing; }
    /// The index takes what comes, or there is not much yet that it has not taken.
    bool hasRoom() const;

signals:
    /// The index has taken these.
    void recorded(const QVector<UploadOutcome> &outcomes);
    /// How the uploads stand in the index by now.
    void looked(const QVector<UploadRow> &rows);
    void refusingChanged();

private:
    void onWritten(qint64 ticket, const UploadRows &rows);

    QVector<UploadOutcome> m_outcomes; ///< that the recorder has not got yet
    int m_unrecorded = 0; ///< with those that it has
    bool m_isRefusing = false;
    QHash<qint64, Then> m_thens;
    qint64 m_ticket = 0;
    QTimer m_flushTimer;
    QThread m_thread;
    UploadRecorder *m_recorder; ///< lives on its thread, which deletes it
};
