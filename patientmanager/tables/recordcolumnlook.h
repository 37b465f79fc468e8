#pragma once

class QSqlTableModel;
class QTableView;

/// How the columns of a record table are shown. GUI thread.
namespace RecordColumnLook {

/// Each column is drawn and edited as its kind asks for. The delegates are the view's.
void installDelegates(QTableView *view, const QSqlTableModel *model);
/// Hides the columns whose flag in a table of the field configuration is not set.
void showChosen(QTableView *view, const QSqlTableModel *model, const char *fieldTable);

} // namespace RecordColumnLook
