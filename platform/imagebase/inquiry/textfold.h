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

/// Whether a text has letters of a script that parts no words: what somebody types in one piece may be stored
/// as family and given name, "山田太郎" as "山田^太郎".
IMAGEBASE_EXPORT bool isUnparted(const QString &text);

/// A folded person name without what stands between its parts: what a text that isUnparted() is looked for
/// in.
IMAGEBASE_EXPORT QString joinedName(const QString &name);

/// Makes them the SQL functions folded(text), foldedname(name) and joinedname(name) of a connection; NULL
/// stays NULL. For a null connection does nothing.
void registerTextFunctions(const QSqlDatabase &db);
