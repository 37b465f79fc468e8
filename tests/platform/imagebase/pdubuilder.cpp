#include "pdubuilder.h"

#include <QtEndian>

namespace {

constexpr quint8 command = 0x01;
constexpr quint8 last = 0x02;

template <typename Number>
QByteArray big(Number number)
{
    const Number value = qToBigEndian(number);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

template <typename Number>
QByteArray little(Number number)
{
    const Number value = qToLittleEndian(number);
    return QByteArray(reinterpret_cast<const char *>(&value), sizeof value);
}

QByteArray pdu(quint8 type, const QByteArray &body)
{
    return QByteArray(1, char(type)) + '\0' + big(quint32(body.size())) + body;
}

QByteArray item(quint8 type, const QByteArray &body)
{
    return QByteArray(1, char(type)) + '\0' + big(quint16(body.size())) + body;
}

QByteArray context(quint8 id, const QByteArray &abstractSyntax)
{
    return item(0x20,
        QByteArray(1, char(id)) + QByteArray(3, '\0') + item(0x30, abstractSyntax)
            + item(0x40, "1.2.840.10008.1.2.1"));
}

QByteArray element(quint16 number, const QByteArray &value)
{
    return little(quint16(0)) + little(number) + little(quint32(value.size())) + value;
}

QByteArray uid(QByteArray text)
{
    return text.size() % 2 == 0 ? text : text + '\0';
}

QByteArray withLength(const QByteArray &elements)
{
    return element(0x0000, little(quint32(elements.size()))) + elements;
}

} // namespace

QByteArray PduBuilder::associateRequest(const QByteArray &called, const QByteArray &calling)
{
    const QByteArray user = item(0x51, big(quint32(65536))) + item(0x52, "1.2.3.4");
    return pdu(0x01,
        big(quint16(1)) + QByteArray(2, '\0') + called.leftJustified(16) + calling.leftJustified(16)
            + QByteArray(32, '\0') + item(0x10, "1.2.840.10008.3.1.1.1")
            + context(1, "1.2.840.10008.5.1.4.1.1.2") + context(3, "1.2.840.10008.1.1") + item(0x50, user));
}

QByteArray PduBuilder::dataPdu(quint8 context, quint8 flags, const QByteArray &bytes)
{
    return pdu(0x04, big(quint32(bytes.size() + 2)) + char(context) + char(flags) + bytes);
}

QByteArray PduBuilder::echoRequest()
{
    return dataPdu(3, command | last,
        withLength(element(0x0002, uid("1.2.840.10008.1.1")) + element(0x0100, little(quint16(0x30)))
            + element(0x0110, little(quint16(1))) + element(0x0800, little(quint16(0x0101)))));
}

QByteArray PduBuilder::storeRequest(const QByteArray &instance)
{
    return dataPdu(1, command | last,
        withLength(element(0x0002, uid("1.2.840.10008.5.1.4.1.1.2")) + element(0x0100, little(quint16(1)))
            + element(0x0110, little(quint16(1))) + element(0x0700, little(quint16(0)))
            + element(0x0800, little(quint16(0))) + element(0x1000, uid(instance))));
}

QByteArray PduBuilder::deepCommand(int depth)
{
    // Referenced SOP sequences of undefined length, an item of undefined length in each.
    const QByteArray level = little(quint16(0x0008)) + little(quint16(0x1199)) + little(quint32(0xffffffff))
        + little(quint16(0xfffe)) + little(quint16(0xe000)) + little(quint32(0xffffffff));
    return dataPdu(3, command | last, level.repeated(depth));
}

QByteArray PduBuilder::broken(QRandomGenerator &random, const QByteArray &called)
{
    const QByteArray request = associateRequest(called, "FUZZER");
    QByteArray bytes;
    switch (random.bounded(8)) {
    case 0:
        bytes.resize(random.bounded(1, 3000));
        random.generate(bytes.begin(), bytes.end());
        return bytes;
    case 1: // cut short
        return request.left(random.bounded(request.size()));
    case 2: // claims to be much longer
        bytes = request;
        bytes.replace(2, 4, big(quint32(random.generate())));
        return bytes;
    case 3: // noise where a request is expected
        bytes = request + QByteArray(random.bounded(2000), char(random.bounded(256)));
        return bytes;
    case 4:
        bytes = request + storeRequest("1.2.3.4.5")
            + dataPdu(1, last * random.bounded(2), QByteArray(random.bounded(40'000), 'x'));
        return bytes;
    case 5: // a packet beyond what was agreed
        return request + dataPdu(1, 0, QByteArray(200'000, 'y'));
    case 6:
        return request + deepCommand(random.bounded(1, 8000));
    default:
        bytes = request + echoRequest();
        break;
    }
    for (int i = random.bounded(1, 12); i > 0; --i) {
        bytes[random.bounded(bytes.size())] = char(random.bounded(256));
    }
    return bytes;
}
