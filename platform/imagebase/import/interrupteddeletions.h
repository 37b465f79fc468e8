#pragma once

#include <QSqlDatabase>

/// Deletions that were noted and not finished: what they are about will go when they are. For the thread of
/// one writer.
class InterruptedDeletions
{
public:
    explicit InterruptedDeletions(const QSqlDatabase &db)
        : m_db(db)
    { }

    /// Looks for them, at the start of a transaction.
    void look();
    /// Whether one of them will take this image.
    bool willTake(qlonglong imagePk) const;

private:
    QSqlDatabase m_db;
    qlonglong m_lastImage = 0; ///< the newest image that any may be about
};
