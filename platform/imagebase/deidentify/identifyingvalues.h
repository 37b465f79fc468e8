#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

/**
 * What an object says of whose it is and where it was made, gathered before any of it goes, so that it is
 * found again where it stands in other places.
 */
class IdentifyingValues
{
public:
    /// Values that are shorter are found as words only.
    static constexpr int leastBytes = 5;

    /// @param bytes as the file has them @param text the same, decoded
    /// @param isPersonal of a person or an institution; otherwise a description
    void add(const QByteArray &bytes, const QString &text, bool isPersonal);
    void addUid(const QByteArray &uid) { m_uids.insert(uid); }

    bool hasUid(const QByteArray &uid) const { return m_uids.contains(uid); }
    /// Whether such a value stands anywhere in the bytes, in whatever case.
    bool isWithin(const QByteArray &bytes) const;
    /// The same for those of persons and institutions only.
    bool isPersonWithin(const QByteArray &bytes) const;
    /// Whether a word is one of a person's or an institution's.
    bool hasWord(const QString &word) const;

private:
    static bool isAnyWithin(const QSet<QByteArray> &values, const QByteArray &bytes);

    QSet<QByteArray> m_personal; ///< in lower case, as far as that is known
    QSet<QByteArray> m_descriptions;
    QSet<QByteArray> m_uids;
    QSet<QString> m_words; ///< folded
};
