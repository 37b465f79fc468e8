#pragma once

#include <QComboBox>

/// The entry of an inquiry in a box of names: the one of exactly this name, else one that differs from it in
/// case alone; -1 for none.
inline int inquiryEntry(const QComboBox &box, const QString &name)
{
    const int exact = box.findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    return exact >= 0 ? exact : box.findData(name, Qt::DisplayRole, Qt::MatchFixedString);
}
