#include "conditionmodel.h"

#include "inquirytable.h"

#include <QFont>

#include <algorithm>

ConditionModel::ConditionModel(QObject *parent)
    : QStandardItemModel(parent)
{
    build();
}

void ConditionModel::build()
{
    setHorizontalHeaderLabels(
        {tr("Group"), tr("Field"), tr("Symbol"), tr("Value"), tr("Logic"), tr("QueryType")});
    horizontalHeaderItem(Value)->setToolTip(tr("Dates may be relative: today, today-7, now-2h.\n"
                                               "No value asks for records without the field."));
    horizontalHeaderItem(Logic)->setToolTip(tr("Joins the condition with the next one of its group"));
    horizontalHeaderItem(QueryType)->setToolTip(
        tr("Precise compares as the symbol says, Fuzzy finds the value anywhere in the text"));
    for (std::size_t level = 0; level < m_groups.size(); ++level) {
        auto *group = new QStandardItem(QLatin1String(recordTableName(RecordLevel(level))));
        QFont font;
        font.setBold(true);
        group->setFont(font);
        setItem(int(level), Group, group);
        m_groups[level] = group;
    }
}

void ConditionModel::load(const QString &inquiry)
{
    clear();
    build();
    for (QStandardItem *group : m_groups) {
        for (const InquiryCondition &condition : InquiryTable::conditions(inquiry, group->text())) {
            append(group, condition);
        }
    }
    markSaved();
}

void ConditionModel::append(QStandardItem *group, const InquiryCondition &condition)
{
    if (group->columnCount() == 0) {
        group->setColumnCount(columnCount());
    }
    QList<QStandardItem *> row{new QStandardItem};
    for (const QString &text :
        {condition.field, condition.symbol, condition.value, condition.logic, condition.queryType}) {
        row.append(new QStandardItem(text));
    }
    group->appendRow(row);
}

QModelIndex ConditionModel::add(RecordLevel level, const QString &field)
{
    QStandardItem *group = m_groups.at(std::size_t(level));
    append(group,
        {group->text(), field, QLatin1String(InquiryWord::equal), QLatin1String(""),
            QLatin1String(InquiryWord::conjunction), QLatin1String(InquiryWord::precise)});
    return group->child(group->rowCount() - 1, Value)->index();
}

void ConditionModel::removeConditions(const QModelIndexList &cells)
{
    QModelIndexList rows;
    for (const QModelIndex &cell : cells) {
        const QModelIndex row = cell.siblingAtColumn(Group);
        if (cell.parent().isValid() && !rows.contains(row)) {
            rows.append(row);
        }
    }
    // From the last one upward, so that none moves before its turn.
    std::sort(rows.begin(), rows.end(),
        [](const QModelIndex &a, const QModelIndex &b) { return a.row() > b.row(); });
    for (const QModelIndex &row : qAsConst(rows)) {
        removeRow(row.row(), row.parent());
    }
}

bool ConditionModel::isEmpty() const
{
    int conditions = 0;
    for (int group = 0; group < rowCount(); ++group) {
        conditions += rowCount(index(group, Group));
    }
    return conditions == 0;
}

InquiryConditions ConditionModel::conditions() const
{
    InquiryConditions conditions;
    for (const QStandardItem *group : m_groups) {
        for (int row = 0; row < group->rowCount(); ++row) {
            const auto text = [group, row](Column column) {
                return group->model()->index(row, column, group->index()).data().toString();
            };
            if (!text(Field).isEmpty()) {
                conditions.append(
                    {group->text(), text(Field), text(Symbol), text(Value), text(Logic), text(QueryType)});
            }
        }
    }
    return conditions;
}

Qt::ItemFlags ConditionModel::flags(const QModelIndex &index) const
{
    const bool isValue = index.parent().isValid() && index.column() > Field;
    const Qt::ItemFlags flags = QStandardItemModel::flags(index);
    return isValue ? flags : flags & ~Qt::ItemIsEditable;
}
