#pragma once

#include "connectionfailure.h"
#include "imagebase_export.h"

#include <QSqlError>

/// What a database error means for someone who wants to use the index at path.
IMAGEBASE_EXPORT ConnectionFailure connectionFailureOf(const QSqlError &error, const QString &path);
