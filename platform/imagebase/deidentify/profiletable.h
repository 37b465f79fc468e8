#pragma once

#include <QByteArray>
#include <QHash>

/// What the profile says of an attribute. Letters as in the standard: D dummy value, Z empty, X remove, K
/// keep, C clean, U new UID.
struct ProfileRule
{
    QByteArray profile; ///< one letter, or several to choose from, "X/Z/D"
    char dates = 0; ///< with the option to keep dates that are moved; 0 where it changes nothing
    char descriptors = 0; ///< with the option to clean descriptions
    char patient = 0; ///< with the option to keep what patients are like

    bool allows(char action) const { return profile.contains(action); }
};

/// The attributes that identify, by their tags: the standard's table, which is a resource of this library.
/// Read once. Any thread.
class ProfileTable
{
public:
    static const ProfileTable &instance();

    /// Null where the table does not name the attribute. @param tag group in the high 16 bits
    const ProfileRule *find(quint32 tag) const;
    int size() const { return m_rules.size(); }

private:
    ProfileTable();

    QHash<quint32, ProfileRule> m_rules; ///< those of repeating groups under the first group
};
