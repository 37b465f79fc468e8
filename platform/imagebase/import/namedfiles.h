#pragma once

#include "imagebase_export.h"

#include <QSqlDatabase>
#include <QString>

#include <memory>

class NativeStatement;

/// Answers which files the records of an index name. Whoever removes a file asks within a write transaction,
/// since files come to their places only within one. For the thread of the connection.
class IMAGEBASE_EXPORT NamedFiles
{
public:
    explicit NamedFiles(const QSqlDatabase &db);
    ~NamedFiles();
    NamedFiles(const NamedFiles &) = delete;
    NamedFiles &operator=(const NamedFiles &) = delete;

    /// In doubt it is named.
    bool contains(const QString &path);

private:
    const std::unique_ptr<NativeStatement> m_record;
};
