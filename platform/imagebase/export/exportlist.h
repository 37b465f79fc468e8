#pragma once

#include "exportrequest.h"
#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QSqlError>

#include <atomic>
#include <optional>

/// The files of the records that a request names, each with its place below the target, by patient, study,
/// series and instance number. Any thread.
/// @param stop ends the reading early
/// @param error why the index could not be read; untouched otherwise
QVector<ExportItem> listExport(
    const QSqlDatabase &db, const ExportRequest &request, const std::atomic<bool> &stop, QSqlError *error);

/// How much there is to export.
struct ExportSize
{
    qint64 files = 0;
    qint64 bytes = 0; ///< as the index knows it
};
/// Asked of the index alone. On the thread of the connection. @return nothing where the index refuses
IMAGEBASE_EXPORT std::optional<ExportSize> exportSize(
    const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys);
