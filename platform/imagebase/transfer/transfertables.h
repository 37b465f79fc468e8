#pragma once

#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QString>

/// The tables `series` and `images`: what of the index is known to be in the cloud.
namespace TransferTables {

/// Enters a series of the index and its images where they are missing; an upload that is recorded stays
/// recorded. A series that the index does not have is left out. @return false where the database refused
IMAGEBASE_EXPORT bool enter(const QSqlDatabase &db, const QString &seriesUid);

} // namespace TransferTables
