#pragma once

#include <QSet>
#include <QVector>

class WorkstationWindow;

/// The records that are selected in the tables of a window, by key: a value that outlives the window and
/// selects them again in another one over the same index.
class ChosenRecords
{
public:
    explicit ChosenRecords(const WorkstationWindow &window);
    /// From the patients down, as clicks would; records that are not listed are left out.
    void selectIn(const WorkstationWindow &window) const;

private:
    QVector<QSet<qlonglong>> m_keys; ///< in the order of the window's forms
};
