#pragma once

#include "attributes.h"
#include "inquirycondition.h"

#include <QStandardItemModel>

#include <array>

/**
 * The conditions of one inquiry: a group row for each record table, and below it a row for each condition.
 *
 * Symbol, value, logic and query type can be edited by hand, and unknown words among them stay as they are
 * stored; groups and fields can not. Remembers the conditions as they were loaded or saved last. Reads the
 * table of stored inquiries and never writes it. GUI thread.
 */
class ConditionModel : public QStandardItemModel
{
    Q_OBJECT

public:
    enum Column { Group, Field, Symbol, Value, Logic, QueryType, ColumnCount };

    /// Four groups without conditions.
    explicit ConditionModel(QObject *parent);

    /// Takes the place of all conditions, and is remembered.
    void load(const QString &inquiry);
    /// A condition on a field, to be filled in by the user. @return the place of its value
    QModelIndex add(RecordLevel level, const QString &field);
    /// Removes the condition rows among these cells; groups stay.
    void removeConditions(const QModelIndexList &cells);

    /// Whether no group has a row.
    bool isEmpty() const;
    /// Group by group, in row order, without rows that have no field.
    InquiryConditions conditions() const;
    /// Remembers the conditions as saved.
    void markSaved() { m_saved = conditions(); }
    bool isChanged() const { return conditions() != m_saved; }

    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    void build();
    void append(QStandardItem *group, const InquiryCondition &condition);

    std::array<QStandardItem *, 4> m_groups{}; ///< by RecordLevel
    InquiryConditions m_saved;
};
