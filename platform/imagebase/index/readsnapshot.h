#pragma once

#include "imagebase_export.h"

#include <QSqlDatabase>

/// One view of the index for several reads, while it lives; nests in a transaction that is already there.
class IMAGEBASE_EXPORT ReadSnapshot
{
public:
    explicit ReadSnapshot(const QSqlDatabase &db);
    ~ReadSnapshot();
    ReadSnapshot(const ReadSnapshot &) = delete;
    ReadSnapshot &operator=(const ReadSnapshot &) = delete;

private:
    QSqlDatabase m_db;
    bool m_held;
};
