#pragma once

#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

/// The tables `series` and `images`: what of the index is known to be in the cloud.
namespace TransferTables {

/// Enters a series of the index and its images where they are missing; an upload that is recorded stays
/// recorded. A series that the index does not have is left out. @return false where the database refused
IMAGEBASE_EXPORT bool enter(const QSqlDatabase &db, const QString &seriesUid);
/// The series without its images.
IMAGEBASE_EXPORT bool enterSeries(const QSqlDatabase &db, const QString &seriesUid);
/// One image; its series is the caller's to enter.
IMAGEBASE_EXPORT bool enterImage(
    const QSqlDatabase &db, const QString &sopInstanceUid, const QString &seriesUid);
/// Says of an image that was entered whether the cloud has it as it is here.
IMAGEBASE_EXPORT bool flag(
    const QSqlDatabase &db, const QString &sopInstanceUid, bool isInCloud = true, QSqlError *error = nullptr);

} // namespace TransferTables
