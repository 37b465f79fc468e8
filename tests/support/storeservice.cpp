#include "storeservice.h"

#include "oddservice.h"

#include <QTcpSocket>

#include <memory>

namespace {

constexpr char headEnd[] = "\r\n\r\n";
constexpr int refusedCode = 0xA900;

qint64 lengthOf(const QByteArray &head)
{
    const int at = head.toLower().indexOf("content-length:");
    return at < 0 ? 0 : head.mid(at + 15, head.indexOf('\r', at) - at - 15).trimmed().toLongLong();
}

/// The UIDs in the meta information of the objects, as the parts come.
QStringList uidsOf(const QByteArray &body)
{
    static const QByteArray element("\x02\x00\x03\x00UI", 6);
    QStringList uids;
    for (int at = body.indexOf(element); at >= 0; at = body.indexOf(element, at + 1)) {
        const int length = uchar(body[at + 6]) + 256 * uchar(body[at + 7]);
        QByteArray uid = body.mid(at + 8, length);
        uid.replace('\0', "");
        uids.append(QString::fromLatin1(uid.trimmed()));
    }
    return uids;
}

QByteArray items(const QStringList &uids, int failure)
{
    QByteArrayList items;
    for (const QString &uid : uids) {
        const QByteArray reason = failure == 0
            ? QByteArray()
            : R"(,"00081197":{"vr":"US","Value":[)" + QByteArray::number(failure) + "]}";
        items.append(R"({"00081155":{"vr":"UI","Value":[")" + uid.toLatin1() + "\"]}" + reason + "}");
    }
    return items.join(',');
}

} // namespace

StoreService::Deed StoreService::answer(
    const QStringList &stored, const QStringList &refused, const QByteArray &status)
{
    const QByteArray json = R"({"00081199":{"vr":"SQ","Value":[)" + items(stored, 0)
        + R"(]},"00081198":{"vr":"SQ","Value":[)" + items(refused, refusedCode) + "]}}";
    return {httpAnswer(status, "application/dicom+json", json), false, stored};
}

StoreService::StoreService(Plan plan)
    : m_plan(std::move(plan))
{
    connect(this, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *line = nextPendingConnection();
        const auto request = std::make_shared<QByteArray>();
        connect(line, &QTcpSocket::readyRead, line, [this, line, request] { read(line, *request); });
        connect(line, &QTcpSocket::disconnected, line, &QObject::deleteLater);
    });
    comeBack();
    m_port = serverPort();
}

QString StoreService::address() const
{
    return QStringLiteral("http://127.0.0.1:%1/web").arg(m_port);
}

void StoreService::leave()
{
    close();
    for (QTcpSocket *line : findChildren<QTcpSocket *>()) {
        line->abort();
    }
}

void StoreService::comeBack()
{
    if (!listen(QHostAddress::LocalHost, m_port)) {
        qFatal("no port: %s", qPrintable(errorString()));
    }
}

void StoreService::read(QTcpSocket *line, QByteArray &request)
{
    request += line->readAll();
    const int head = request.indexOf(headEnd);
    if (head < 0) {
        return;
    }
    const qint64 body = request.size() - head - 4;
    if (m_cutAfter >= 0 && body >= m_cutAfter) {
        m_cutAfter = -1;
        line->abort();
        return;
    }
    if (body >= lengthOf(request.left(head + 2))) {
        carryOut(line, request.mid(head + 4));
        request.clear();
    }
}

void StoreService::carryOut(QTcpSocket *line, const QByteArray &body)
{
    const Deed deed = m_plan(++m_requests, uidsOf(body));
    for (const QString &uid : deed.stored) {
        ++m_taken[uid];
    }
    line->write(deed.answer);
    if (deed.hangUp) {
        line->disconnectFromHost();
    }
}
