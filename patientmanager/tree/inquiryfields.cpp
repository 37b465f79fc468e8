#include "inquiryfields.h"

#include "columncaptions.h"
#include "fieldlist.h"

#include <QSqlQueryModel>
#include <QSqlTableModel>

InquiryFields::InquiryFields(QObject *parent)
    : QObject(parent)
{
    for (FieldList *&list : m_lists) {
        list = new FieldList(this);
    }
}

QStringListModel *InquiryFields::of(RecordLevel level)
{
    FieldList *list = m_lists.at(std::size_t(level));
    if (list->rowCount() == 0) {
        fill(level);
    }
    return list;
}

void InquiryFields::fill(RecordLevel level)
{
    if (level == RecordLevel::Patient) {
        delete m_table;
        m_table = new QSqlTableModel(parent());
    }
    if (!m_table) {
        return;
    }
    const QString table = QLatin1String(recordTableName(level));
    const QString configuration = table + QStringLiteral("user");
    QSqlQueryModel columns;
    columns.setQuery(QStringLiteral("SELECT * FROM ") + configuration);
    m_table->setTable(configuration);
    QStringList fields;
    for (int section = 0; section <= columns.columnCount() - 2; ++section) {
        fields.append(m_table->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString());
    }
    FieldList *list = m_lists.at(std::size_t(level));
    list->setCaptions(ColumnCaptions::of(table));
    list->setStringList(fields);
}
