#pragma once

#include "importreport.h"
#include "importrequest.h"

#include <QSqlDatabase>
#include <QString>
#include <QTemporaryDir>

/**
 * A fresh index in a folder of its own, opened as the default connection by createConnection(), closed and
 * removed at the end. One at a time. Rows go in by plain statements, as any other program would write them.
 */
class TemporaryIndex
{
public:
    TemporaryIndex();
    ~TemporaryIndex();
    TemporaryIndex(const TemporaryIndex &) = delete;
    TemporaryIndex &operator=(const TemporaryIndex &) = delete;

    QString folder() const { return m_folder.path(); }
    QString path() const;
    QSqlDatabase database() const;

    /// Adders answer the new row's pk; child rows hang below the given parent. Times are "yyyy-MM-dd
    /// HH:mm:ss".
    qlonglong addPatient(
        const QString &name, const QString &id, const QString &updatedTime = QString()) const;
    qlonglong addStudy(qlonglong patient, const QString &uid) const;
    qlonglong addSeries(qlonglong study, const QString &uid, const QString &modality = QStringLiteral("CT"),
        int number = 1) const;
    qlonglong addImage(qlonglong series, const QString &uid, int instanceNumber = 1,
        const QString &filePath = QString()) const;

    /// Imports files and folders as the program does.
    ImportReport import(const QStringList &paths, ImportMode mode = ImportMode::Reference) const;

    /// The rows of a table.
    int count(const char *table) const;
    /// Runs one statement that must succeed; the first value of its first row, or an invalid variant.
    QVariant query(const QString &sql, const QVariantList &values = {}) const;

private:
    QTemporaryDir m_folder;
};
