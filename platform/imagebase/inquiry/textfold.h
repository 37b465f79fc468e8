#pragma once

#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QString>

/// A text without what a search should not see: case, accents, width. "Müller" and "ＭＵＬＬＥＲ" become
/// "muller".
IMAGEBASE_EXPORT QString foldedText(const QString &text);

/// A folded person name whose parts stand apart by one blank: "Müller^Jörg" and "muller, jorg" become the
/// same.
IMAGEBASE_EXPORT QString foldedName(const QString &name);

/// Makes them the SQL functions folded(text) and foldedname(name) of a connection; NULL stays NULL. For a
/// null connection does nothing.
void registerTextFunctions(const QSqlDatabase &db);
