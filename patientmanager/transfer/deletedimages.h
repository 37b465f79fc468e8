#pragma once

#include "attributes.h"

#include <QList>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

/// What a deletion asks about the images of the records that it is about to delete, a statement each.
namespace DeletedImages {

int count(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys);
/// Each answers false with the error where the index refuses.
/// The copies of these records that other records name, too.
bool sharedCopies(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys,
    QSet<QString> *paths, QSqlError *error);
/// The keys of a lower level.
bool keysBelow(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys, RecordLevel lower,
    QList<qlonglong> *below, QSqlError *error);
/// Tells those apart that have got images of higher keys than newest; keys that are not there have none, and
/// those of images are left out.
bool split(const QSqlDatabase &db, RecordLevel level, const QList<qlonglong> &keys, qlonglong newest,
    QList<qlonglong> *whole, QList<qlonglong> *mixed, QSqlError *error);

} // namespace DeletedImages
