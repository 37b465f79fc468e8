#include "recordcolumnlook.h"

#include "columnkind.h"
#include "recorddelegate.h"
#include "statusdelegate.h"
#include "uploadstatus.h"

#include <QSqlField>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QSqlTableModel>
#include <QTableView>

#include <array>

void RecordColumnLook::installDelegates(QTableView *view, const QSqlTableModel *model)
{
    std::array<RecordDelegate *, columnKindCount> delegates{};
    const QSqlRecord record = model->record();
    for (int column = 0; column < record.count(); ++column) {
        if (record.fieldName(column) == QLatin1String(UploadStatus::column)) {
            view->setItemDelegateForColumn(column, new StatusDelegate(view));
            continue;
        }
        const ColumnKind kind = columnKind(record.field(column));
        RecordDelegate *&delegate = delegates[std::size_t(kind)];
        if (!delegate) {
            delegate = new RecordDelegate(kind, view);
        }
        view->setItemDelegateForColumn(column, delegate);
    }
}

void RecordColumnLook::showChosen(QTableView *view, const QSqlTableModel *model, const char *fieldTable)
{
    QSqlQueryModel flags;
    flags.setQuery(QStringLiteral("SELECT * FROM %1").arg(QLatin1String(fieldTable)));
    for (int column = 0; column < model->record().count(); ++column) {
        const bool isShown = flags.data(flags.index(0, column)).toInt() != 0;
        view->setColumnHidden(column, !isShown);
    }
}
