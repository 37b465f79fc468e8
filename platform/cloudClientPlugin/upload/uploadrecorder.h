#pragma once

#include "uploadstore.h"

#include <QObject>
#include <QTimer>

#include <deque>

/**
 * Writes into the index what uploads have come to, one order after the other, on a thread of its own: whoever
 * holds the index's lock meanwhile stops no request. What the index refuses stays first in the row and is
 * tried again.
 */
class UploadRecorder : public QObject
{
    Q_OBJECT

public:
    using Write = std::function<bool(UploadStore &)>;

    explicit UploadRecorder(QString databasePath);
    /// What is left has its last chance.
    ~UploadRecorder() override;

    /// Reads how the uploads stand, and from then on whenever somebody else has written.
    void start();
    /// @param ticket is told by written() when it was done
    void take(const Write &write, qint64 ticket);

signals:
    /// @param rows how all uploads stood behind the order
    void written(qint64 ticket, const UploadRows &rows);
    /// Somebody else has changed something.
    void looked(const QVector<UploadRow> &rows);
    /// Whether the index refuses what is to be written; told when that has changed.
    void refusing(bool isRefusing);

private:
    struct Order
    {
        Write write;
        qint64 ticket;
    };

    void carryOut();
    void look();
    void tell(bool isRefusing);

    UploadStore m_store;
    std::deque<Order> m_orders;
    bool m_isRefusing = false;
    qint64 m_version = 0;
    bool m_hasLooked = false;
    QTimer m_again;
    QTimer m_look;
};

Q_DECLARE_METATYPE(UploadRow)
Q_DECLARE_METATYPE(UploadRows)
