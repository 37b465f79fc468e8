#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

/// Hands out one string for equal texts: the rows of a table share most of theirs.
class TextPool
{
public:
    /// @param bytes UTF-8, not kept
    QString text(const char *bytes, int size)
    {
        const auto known = m_texts.constFind(QByteArray::fromRawData(bytes, size));
        if (known != m_texts.cend()) {
            return *known;
        }
        return *m_texts.insert(QByteArray(bytes, size), QString::fromUtf8(bytes, size));
    }

private:
    QHash<QByteArray, QString> m_texts;
};
