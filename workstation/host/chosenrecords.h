#pragma once

#include "shownpatients.h"

#include <QSet>
#include <QVector>

class WorkstationWindow;

/// The patients that a window lists and the records that are selected in its tables, by key: a value that
/// outlives the window and brings both back in another one over the same index.
class ChosenRecords
{
public:
    explicit ChosenRecords(const WorkstationWindow &window);
    /// What others have listed comes back, too, unless that is nobody.
    void listIn(const WorkstationWindow &window) const;
    /// From the patients down, as clicks would; records that are not listed are left out.
    void selectIn(const WorkstationWindow &window) const;

private:
    ShownPatients::Wish m_shown;
    QString m_filter; ///< where others have listed patients
    QVector<QSet<qlonglong>> m_keys; ///< in the order of the window's forms
};
