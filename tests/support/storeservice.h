#pragma once

#include <QHash>
#include <QStringList>
#include <QTcpServer>

#include <functional>

/**
 * A DICOMweb service that takes objects and forgets them, answering as its plan says: it knows what was sent
 * to it, and how often. Needs the caller's event loop.
 */
class StoreService : public QTcpServer
{
public:
    /// What is done with a request.
    struct Deed
    {
        QByteArray answer; ///< whole, with its status line; empty for none
        bool hangUp = false;
        QStringList stored; ///< what it has taken, whatever it answers
    };
    /// @param number of the request, from 1. @param uids of the objects, in their order
    using Plan = std::function<Deed(int number, const QStringList &uids)>;

    explicit StoreService(Plan plan);

    QString address() const;
    void setPlan(Plan plan) { m_plan = std::move(plan); }
    /// Hangs up at once when so many bytes of a body have come; once.
    void cutAfter(qint64 bytes) { m_cutAfter = bytes; }
    /// How often each object was taken.
    const QHash<QString, int> &taken() const { return m_taken; }
    int requests() const { return m_requests; }
    /// Goes away with all connections.
    void leave();
    /// Comes back at the same place.
    void comeBack();

    /// The answer to a request that was understood.
    static Deed answer(
        const QStringList &stored, const QStringList &refused = {}, const QByteArray &status = "200 OK");

private:
    void read(class QTcpSocket *line, QByteArray &request);
    void carryOut(QTcpSocket *line, const QByteArray &request);

    Plan m_plan;
    quint16 m_port = 0;
    qint64 m_cutAfter = -1;
    int m_requests = 0;
    QHash<QString, int> m_taken;
};
