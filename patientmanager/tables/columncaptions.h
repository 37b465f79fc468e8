#pragma once

#include <QHash>
#include <QString>

class QSqlTableModel;

/// The captions that the captions file has for the columns of a record table, by column name. The file's
/// values are read through the local 8-bit codec, as it has always been written.
QHash<QString, QString> columnCaptions(const QString &table);

/// Gives the columns of a model, whose table is set, their captions; other columns keep their names.
void applyColumnCaptions(QSqlTableModel *model);
