#pragma once

class QSqlTableModel;

/// Gives the columns of a model, whose table is set, the captions that the captions file has for that table;
/// other columns keep their names. The file's values are read through the local 8-bit codec, as it has always
/// been written.
void applyColumnCaptions(QSqlTableModel *model);
