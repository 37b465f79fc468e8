#pragma once

#include "connectionfailure.h"

#include <QSqlError>

/// What a database error means for someone who wants to use the index at path.
ConnectionFailure connectionFailureOf(const QSqlError &error, const QString &path);
