#pragma once

#include "attributes.h"

#include <QMetaProperty>
#include <QSharedData>
#include <QStringList>
#include <QVariant>
#include <QVector>

class QObject;

/**
 * The columns that all levels of the patient tree share: which level each belongs to, and how its value is
 * read of a record. Made once for a list of names and shared by all items of a tree.
 *
 * The n-th "pk" opens the section of the n-th level.
 */
class TreeColumns : public QSharedData
{
public:
    explicit TreeColumns(const QStringList &names);

    const QStringList &names() const { return m_names; }
    int count() const { return m_names.size(); }
    bool isOf(int column, RecordLevel level) const { return m_sections.at(column) == int(level); }
    /// The value of a record of that level: "" outside its section, invalid where it has no such property.
    QVariant value(int column, RecordLevel level, const QObject &record) const;

private:
    QStringList m_names;
    QVector<int> m_sections; ///< -1 before the first "pk", 0, 1, 2 as the levels, more after them
    QVector<QMetaProperty> m_properties; ///< of the record class of the column's section
};
