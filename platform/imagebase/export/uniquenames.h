#pragma once

#include <QHash>
#include <QSet>
#include <QString>

/// Gives names that differ within their folder also where a system does not tell capital letters from small
/// ones.
class UniqueNames
{
public:
    /// Says that a name is in use.
    void take(const QString &folder, const QString &name);
    /// The name itself, or with a number before its suffix; in use from then on.
    QString unique(const QString &folder, const QString &name);

private:
    QSet<QString> m_taken; ///< folder and name as one path, folded
    QHash<QString, int> m_numbers; ///< where the numbering of a name stands
};
