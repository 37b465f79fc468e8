#include "inquiryfields.h"

#include <QSqlQueryModel>
#include <QSqlTableModel>
#include <QStringListModel>

InquiryFields::InquiryFields(QObject *parent)
    : QObject(parent)
{
    for (QStringListModel *&list : m_lists) {
        list = new QStringListModel(this);
    }
}

QStringListModel *InquiryFields::of(RecordLevel level)
{
    QStringListModel *list = m_lists.at(std::size_t(level));
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
    const QString configuration = QLatin1String(recordTableName(level)) + QStringLiteral("user");
    QSqlQueryModel columns;
    columns.setQuery(QStringLiteral("SELECT * FROM ") + configuration);
    m_table->setTable(configuration);
    QStringList fields;
    for (int section = 0; section <= columns.columnCount() - 2; ++section) {
        fields.append(m_table->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString());
    }
    m_lists.at(std::size_t(level))->setStringList(fields);
}
