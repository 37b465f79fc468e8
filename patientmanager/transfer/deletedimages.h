#pragma once

#include "attributes.h"

#include <QList>
#include <QSet>
#include <QSqlDatabase>
#include <QString>

/// What a deletion asks about the images of the records that it is about to delete, a statement each.
namespace DeletedImages {

int count(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys);
/// The copies of these records that other records name, too.
QSet<QString> sharedCopies(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys);
/// Those that are no newer than a key of an image.
/// @param hasLater becomes whether there are others
QList<qlonglong> upTo(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys,
    qlonglong newest, bool *hasLater);

} // namespace DeletedImages
