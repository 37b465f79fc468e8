#pragma once

#include <QComboBox>

/// The entry of exactly this name; -1 for none.
inline int exactEntry(const QComboBox &box, const QString &name)
{
    return box.findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
}

/// The entry of an inquiry in a box of names: the one of exactly this name, else one that differs from it in
/// case alone; -1 for none.
inline int inquiryEntry(const QComboBox &box, const QString &name)
{
    const int exact = exactEntry(box, name);
    return exact >= 0 ? exact : box.findData(name, Qt::DisplayRole, Qt::MatchFixedString);
}
