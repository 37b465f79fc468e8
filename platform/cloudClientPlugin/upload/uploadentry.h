#pragma once

#include "uploadorder.h"

#include <QSqlDatabase>

class TransferTables;

/// Enters uploads that are asked for into the index.
namespace UploadEntry {

/// Sizes of the files that a disk has. A slow one is waited for here, before the lock of writers is taken.
UploadOrder measured(UploadOrder order);

/// The order with its files, what the index knows of them taken from there; inside a transaction of the
/// caller's.
/// @return false where the index refused
bool enter(const QSqlDatabase &db, TransferTables &tables, const UploadOrder &order);

} // namespace UploadEntry
