#pragma once

#include "attributes.h"
#include "patientmanager_export.h"

#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QVector>

/// A deletion of some records of a level, as its note in the index has it.
struct BegunDeletion
{
    qlonglong pk = 0; ///< of the note
    RecordLevel level = RecordLevel::Patient;
    QList<qlonglong> keys;
    bool everyFile = false;
    qlonglong lastImage = 0; ///< the newest image when it began: later ones are none of its business
};

/**
 * The notes of deletions that have begun. A deletion is noted before its first file goes, safe from a power
 * cut, and forgotten in the transaction that drops its records; what is found later was interrupted. For the
 * thread of the connection.
 */
class PATIENTMANAGER_EXPORT DeletionJournal
{
public:
    explicit DeletionJournal(const QSqlDatabase &db);

    /// Notes a deletion in a transaction of its own and fills in pk and lastImage. @return an invalid error
    /// where that is safe
    QSqlError note(BegunDeletion *deletion) const;
    /// Within a transaction of the caller's, or by itself.
    bool forget(qlonglong pk) const;
    QVector<BegunDeletion> begun() const;

private:
    QSqlDatabase m_db;
};
