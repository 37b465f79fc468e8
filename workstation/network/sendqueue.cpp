#include "sendqueue.h"

#include "indexconnection.h"
#include "sendlog.h"

#include <QVariant>

namespace {

/// Jobs to a node that may go on; takes its three values from the first parameter on.
const char ofNode[] = "job.ae_title = ? AND job.host = ? AND job.port = ? AND job.hold = $free "
                      "AND job.ended IS NULL";

void bindNode(QSqlQuery &query, const DicomNode &node)
{
    query.bindValue(0, node.aeTitle);
    query.bindValue(1, node.host);
    query.bindValue(2, node.port);
}

} // namespace

QVector<WaitingNode> SendQueue::nodes(const QDateTime &now, int most)
{
    QSqlQuery &query = m_store.prepared(QStringLiteral(
        "SELECT ae_title, host, port, sum((SELECT count(*) FROM (SELECT 1 FROM object WHERE job = job.id "
        "AND state = $waiting AND not_before <= ? LIMIT ?))) AS waiting "
        "FROM job WHERE hold = $free AND ended IS NULL GROUP BY ae_title, host, port HAVING waiting > 0 "
        "ORDER BY min(id)"));
    query.bindValue(0, now.toMSecsSinceEpoch());
    query.bindValue(1, most);
    QVector<WaitingNode> found;
    for (bool more = m_store.run(query) && query.next(); more; more = query.next()) {
        found.append({{query.value(0).toString(), query.value(1).toString(), query.value(2).toInt()},
            query.value(3).toInt()});
    }
    query.finish();
    return found;
}

QVector<SendObject> SendQueue::waiting(const DicomNode &node, const QDateTime &now, int most)
{
    QSqlQuery &query = m_store.prepared(
        QStringLiteral("SELECT %1 FROM job CROSS JOIN object ON object.job = job.id WHERE %2 "
                       "AND object.state = $waiting AND not_before <= ? ORDER BY job.id, object.id LIMIT ?")
            .arg(sendObjectColumns(), QLatin1String(ofNode)));
    bindNode(query, node);
    query.bindValue(3, now.toMSecsSinceEpoch());
    query.bindValue(4, most);
    QVector<SendObject> found;
    for (bool more = m_store.run(query) && query.next(); more; more = query.next()) {
        found.append(sendObjectOf(query));
    }
    query.finish();
    return found;
}

QVector<SendObject> SendQueue::take(const DicomNode &node, const QDateTime &now, int most)
{
    const std::lock_guard lock(SendStore::writers());
    WriteTransaction transaction(m_store.database());
    if (!transaction.isActive()) {
        return {};
    }
    QVector<SendObject> taken = waiting(node, now, most);
    QSqlQuery &query = m_store.prepared(QStringLiteral("UPDATE object SET state = $sending WHERE id = ?"));
    for (SendObject &object : taken) {
        object.state = SendObjectState::Sending;
        query.bindValue(0, object.id);
        if (!m_store.run(query)) {
            return {};
        }
    }
    return !taken.isEmpty() && transaction.commit() ? taken : QVector<SendObject>();
}

QVector<StoreKind> SendQueue::kinds(const DicomNode &node, int most)
{
    QSqlQuery &query = m_store.prepared(QStringLiteral(
        "SELECT DISTINCT sop_class, transfer_syntax FROM job CROSS JOIN object "
        "ON object.job = job.id WHERE %1 AND object.state = $waiting AND sop_class <> '' LIMIT ?")
                                            .arg(QLatin1String(ofNode)));
    bindNode(query, node);
    query.bindValue(3, most);
    QVector<StoreKind> found;
    for (bool more = m_store.run(query) && query.next(); more; more = query.next()) {
        found.append({query.value(0).toByteArray(), query.value(1).toByteArray()});
    }
    query.finish();
    return found;
}

bool SendQueue::release(const QVector<SendObject> &objects)
{
    const std::lock_guard lock(SendStore::writers());
    WriteTransaction transaction(m_store.database());
    if (!transaction.isActive()) {
        return false;
    }
    QSqlQuery &query = m_store.prepared(
        QStringLiteral("UPDATE object SET state = $waiting WHERE id = ? AND state = $sending"));
    for (const SendObject &object : objects) {
        query.bindValue(0, object.id);
        if (!m_store.run(query)) {
            return false;
        }
    }
    return transaction.commit();
}

bool SendQueue::record(const SendObject &object, const QDateTime &notBefore)
{
    const std::lock_guard lock(SendStore::writers());
    QSqlQuery &query = m_store.prepared(QStringLiteral(
        "UPDATE object SET state = ?, problem = ?, status = ?, network = ?, detail = ?, attempts = ?, "
        "changed = ?, not_before = ?, sop_class = ?, sop_instance = ?, transfer_syntax = ? "
        "WHERE id = ? AND state = $sending"));
    return m_store.run(query,
        {int(object.state), int(object.outcome.problem), int(object.outcome.status),
            int(object.outcome.network.problem), object.outcome.detail, object.attempts,
            object.changed.toMSecsSinceEpoch(), notBefore.isValid() ? notBefore.toMSecsSinceEpoch() : 0,
            object.sopClassUid, object.sopInstanceUid, object.transferSyntaxUid, object.id});
}

bool SendQueue::failAll(const DicomNode &node, const NetworkFailure &failure)
{
    const std::lock_guard lock(SendStore::writers());
    QSqlQuery &query = m_store.prepared(QStringLiteral(
        "UPDATE object SET state = $failed, problem = ?, network = ?, detail = ?, changed = ? "
        "WHERE state = $waiting AND job IN (SELECT id FROM job WHERE ae_title = ? AND host = ? "
        "AND port = ? AND hold = $free AND ended IS NULL)"));
    return m_store.run(query,
        {int(StoreProblem::Network), int(failure.problem), failure.detail,
            QDateTime::currentMSecsSinceEpoch(), node.aeTitle, node.host, node.port});
}
