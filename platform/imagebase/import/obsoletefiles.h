#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

/// The index's note of the files in its store that no record names any more: made together with the record
/// that took their place, and ended when they are removed. For the thread of one writer.
class ObsoleteFiles
{
public:
    explicit ObsoleteFiles(const QSqlDatabase &db)
        : m_db(db)
    { }

    /// Inside a transaction of the caller's. @return false where that failed; error() says why
    bool note(const QString &filePath);
    /// True for a file that was noted and is still to be removed.
    bool contains(const QString &filePath) const;
    /// Removes the files of committed notes, and the notes of those that are gone.
    void remove();

    const QSqlError &error() const { return m_error; }

private:
    QSqlDatabase m_db;
    QSqlError m_error;
};
