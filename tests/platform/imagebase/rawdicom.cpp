#include "rawdicom.h"

#include <QByteArrayList>

RawDicom::RawDicom(const QByteArray &transferSyntax)
    : m_bytes(QByteArray(128, '\0') + "DICM")
{
    explicitElement(0x00020010, "UI", transferSyntax);
}

QByteArray RawDicom::number(quint32 value, int bytes)
{
    QByteArray out;
    for (int i = 0; i < bytes; ++i) {
        out += static_cast<char>(value >> (8 * i));
    }
    return out;
}

QByteArray RawDicom::tagBytes(quint32 tag)
{
    return number(tag >> 16, 2) + number(tag & 0xffff, 2);
}

RawDicom &RawDicom::explicitElement(quint32 tag, const char *vr, const QByteArray &value)
{
    const QByteArray padded = value.size() % 2 == 0 ? value : value + (qstrcmp(vr, "UI") == 0 ? '\0' : ' ');
    const bool longForm = QByteArrayList{"OB", "OW", "SQ", "UN", "UC", "UT"}.contains(vr);
    m_bytes += tagBytes(tag) + vr;
    m_bytes +=
        longForm ? number(0, 2) + number(quint32(padded.size()), 4) : number(quint32(padded.size()), 2);
    m_bytes += padded;
    return *this;
}

RawDicom &RawDicom::implicitElement(quint32 tag, const QByteArray &value)
{
    const QByteArray padded = value.size() % 2 == 0 ? value : value + '\0';
    return raw(tagBytes(tag) + number(quint32(padded.size()), 4) + padded);
}

RawDicom &RawDicom::raw(const QByteArray &bytes)
{
    m_bytes += bytes;
    return *this;
}

RawDicom &RawDicom::identification()
{
    return explicitElement(0x0020000d, "UI", "1.2.3")
        .explicitElement(0x0020000e, "UI", "1.2.3.4")
        .explicitElement(0x00200013, "IS", "7");
}
