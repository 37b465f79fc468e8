#pragma once

#include "imagebase_export.h"

#include <QHash>
#include <QString>

class QSqlTableModel;

/**
 * What the columns of the record tables are called. GUI thread.
 *
 * The captions stand in rename.ini, in the system's local encoding, as they have always been written. A host
 * that speaks another language names it; the captions of "rename.<language>.ini", in UTF-8, in one of the two
 * folders of rename.ini, are then laid over those. A caption that rename.ini has otherwise than the one that
 * is delivered is the site's own: it stays in every language.
 */
namespace ColumnCaptions {

/// @param language a locale name such as "zh_CN"; empty, as at the start, for rename.ini alone
IMAGEBASE_EXPORT void setLanguage(const QString &language);

/// The captions of a record table by column name; empty where there is no file.
IMAGEBASE_EXPORT QHash<QString, QString> of(const QString &table);

/// Gives the columns of a model, whose table is set, their captions; other columns keep their names.
IMAGEBASE_EXPORT void apply(QSqlTableModel *model);

} // namespace ColumnCaptions
