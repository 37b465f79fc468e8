#pragma once

#include "filewalker.h"
#include "importrequest.h"
#include "indexconnection.h"

#include <QSqlQuery>

/// Answers whether the index has exactly this file already: same path, size, time and inode, and in the mode
/// asked for. One thread, on a connection of its own.
class KnownFiles
{
public:
    KnownFiles(const QString &databasePath, ImportMode mode);

    bool contains(const WalkedFile &file);

private:
    IndexConnection m_connection;
    ImportMode m_mode;
    bool m_any = false;
    QSqlQuery m_find;
};
