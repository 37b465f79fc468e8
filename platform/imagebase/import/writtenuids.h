#pragma once

#include <QHash>
#include <QSet>
#include <QString>

/// The UIDs that an import has entered into an index that was empty: as long as they are all that it has, it
/// need not be asked about each file. A hash met twice only costs the question.
class WrittenUids
{
public:
    explicit WrittenUids(bool isAll)
        : m_isAll(isAll)
    { }

    /// Whether the index may have it.
    bool mayHave(const QString &uid) const { return !m_isAll || m_hashes.contains(qHash(uid)); }

    void add(const QString &uid)
    {
        if (m_isAll) {
            m_hashes.insert(qHash(uid));
        }
        if (m_hashes.size() > most) {
            giveUp();
        }
    }

    /// From now on the index may have any.
    void giveUp()
    {
        m_isAll = false;
        m_hashes.clear();
    }

private:
    static constexpr int most = 500'000;

    bool m_isAll;
    QSet<uint> m_hashes;
};
