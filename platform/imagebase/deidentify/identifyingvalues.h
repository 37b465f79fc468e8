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
    /// Values that are shorter are found as words, or where they stand alone.
    static constexpr int leastBytes = 5;
    /// Shorter words are found in descriptions only.
    static constexpr int leastLetters = 3;

    /// @param bytes as the file has them @param text the same, decoded
    /// @param isPersonal of a person or an institution; otherwise a description
    void add(const QByteArray &bytes, const QString &text, bool isPersonal);
    /// A date, which is found as people write dates, too.
    void addDate(const QByteArray &values);
    void addUid(const QByteArray &uid) { m_uids.insert(uid); }

    /// Whether the bytes have such a UID in them.
    bool isUidWithin(const QByteArray &bytes) const;
    /// Whether such a value stands anywhere in the bytes, in whatever case.
    bool isWithin(const QByteArray &bytes) const;
    /// The same for those of persons and institutions only.
    bool isPersonWithin(const QByteArray &bytes) const;
    /// Whether a text is as a whole a value of a person or an institution, however short.
    bool isPerson(const QString &text) const;
    /// Whether a word is one of a person's or an institution's, or has such a name in it, joined.
    bool hasWord(const QString &word) const;

private:
    static bool isAnyWithin(const QSet<QByteArray> &values, const QByteArray &bytes);
    void addNames(const QString &text);

    QSet<QByteArray> m_personal; ///< in lower case, as far as that is known
    QSet<QByteArray> m_descriptions;
    QSet<QByteArray> m_uids;
    QSet<QString> m_whole; ///< folded, as m_words and m_joined
    QSet<QString> m_words;
    QSet<QString> m_joined; ///< the parts of names, without anything between them
};
