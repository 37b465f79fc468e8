#pragma once

#include "patientmanager_export.h"

#include <QExplicitlySharedDataPointer>
#include <QList>
#include <QStringList>
#include <QVariant>

class IndexRecord;
class QPatient;
class QSeries;
class QStudy;
class TreeColumns;

/**
 * A row of the patient tree: a patient, a study or a series, or the root with the header texts.
 *
 * Owns its children. The record is borrowed and must outlive the item: its values are read of it when asked.
 * A copy shows the same record and the same children, which stay the original's: it must not outlive them.
 */
class PATIENTMANAGER_EXPORT QPatientTreeItem
{
public:
    /// Items without a record, with values of their own.
    QPatientTreeItem(const QList<QVariant> &values, QPatientTreeItem *parent, const QStringList &columns);
    QPatientTreeItem(const QStringList &values, QPatientTreeItem *parent, const QStringList &columns);
    /// A record with all that hangs below it. The item is not yet among its parent's children.
    QPatientTreeItem(const QPatient *patient, QPatientTreeItem *parent, const QStringList &columns);
    QPatientTreeItem(const QStudy *study, QPatientTreeItem *parent, const QStringList &columns);
    QPatientTreeItem(const QSeries *series, QPatientTreeItem *parent, const QStringList &columns);
    QPatientTreeItem(const QPatientTreeItem &other);
    QPatientTreeItem &operator=(const QPatientTreeItem &other);
    ~QPatientTreeItem();

    void appendChild(QPatientTreeItem *child);
    /// Takes a child out without deleting it.
    void remove(QPatientTreeItem *child);
    /// Takes the last child out; null where there is none.
    QPatientTreeItem *takeLast();
    /// Null out of range.
    QPatientTreeItem *child(int row) const;
    int childCount() const;
    int columnCount() const;
    /// "" in the columns of other levels; invalid out of range and where the record has no such property.
    QVariant data(int column) const;
    /// Place among the parent's children; 0 for the root.
    int row() const;
    QPatientTreeItem *parentItem() const;

    /// Null for the rows of other levels.
    const QPatient *getPatient() const;
    const QStudy *getStudy() const;
    const QSeries *getSeries() const;
    /// Whichever of them it is; null for the root.
    const IndexRecord *record() const { return m_record; }

private:
    QPatientTreeItem(const IndexRecord *record, QPatientTreeItem *parent, const QStringList &columns);

    QList<QPatientTreeItem *> m_children;
    QList<QVariant> m_values; ///< of an item without record
    QExplicitlySharedDataPointer<TreeColumns> m_columns;
    QPatientTreeItem *m_parent;
    const IndexRecord *m_record = nullptr;
    mutable int m_row = 0; ///< remembered; siblings may have moved since
    bool m_ownsChildren = true;
};
