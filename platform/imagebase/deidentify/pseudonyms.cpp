#include "pseudonyms.h"

#include <QMessageAuthenticationCode>
#include <QtEndian>

#include <algorithm>

namespace {

/// A number in decimal digits. @param bytes the most significant first
QByteArray decimal(QByteArray bytes)
{
    QByteArray digits;
    while (std::any_of(bytes.cbegin(), bytes.cend(), [](char byte) { return byte != 0; })) {
        uint rest = 0;
        for (char &byte : bytes) {
            const uint value = rest * 256 + uchar(byte);
            byte = char(value / 10);
            rest = value % 10;
        }
        digits.prepend(char('0' + rest));
    }
    return digits.isEmpty() ? QByteArray("0") : digits;
}

} // namespace

Pseudonyms::Pseudonyms(QByteArray siteKey)
    : m_key(std::move(siteKey))
{ }

QByteArray Pseudonyms::digest(const char *purpose, const QByteArray &text) const
{
    return QMessageAuthenticationCode::hash(
        QByteArray(purpose) + '\0' + text, m_key, QCryptographicHash::Sha256);
}

QByteArray Pseudonyms::uid(const QByteArray &original) const
{
    constexpr int uuidBytes = 16;
    return "2.25." + decimal(digest("uid", original).left(uuidBytes));
}

QString Pseudonyms::code(const QByteArray &identity) const
{
    constexpr char letters[] = "0123456789ABCDEFGHJKMNPQRSTVWXYZ"; // none that is taken for another
    constexpr int length = 10;
    constexpr int bits = 5;
    const QByteArray bytes = digest("patient", identity);
    quint64 number = qFromBigEndian<quint64>(bytes.constData());
    QString code;
    for (int i = 0; i < length; ++i) {
        code.append(QLatin1Char(letters[number & ((1U << bits) - 1)]));
        number >>= bits;
    }
    return code;
}

int Pseudonyms::daysBack(const QByteArray &identity) const
{
    constexpr quint32 fewest = 30;
    constexpr quint32 span = 3650;
    return int(fewest + qFromBigEndian<quint32>(digest("days", identity).constData()) % span);
}
