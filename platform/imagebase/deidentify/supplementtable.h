#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>

/// What the profile leaves open: our own rules, and terms that are nobody's name. Resources of this library,
/// read once. Any thread.
class SupplementTable
{
public:
    enum class Action : quint8 {
        None,
        Remove,
        Empty,
        Keep,
        NeverMoved ///< a date that is known elsewhere
    };

    static const SupplementTable &instance();

    /// @param tag group in the high 16 bits
    Action find(quint32 tag) const { return m_actions.value(tag, Action::None); }
    /// Whether a code string is one that the standard defines: all its words are.
    bool isTerm(const QByteArray &value) const;

private:
    SupplementTable();

    QHash<quint32, Action> m_actions;
    QSet<QByteArray> m_terms;
};
