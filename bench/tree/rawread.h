#pragma once

#include <QString>

/// Milliseconds that reading every row and column of the three upper record tables takes, and nothing else:
/// the limit of a query that finds all.
double rawReadMs(const QString &path);
