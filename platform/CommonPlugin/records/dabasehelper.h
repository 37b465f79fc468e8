#pragma once

#include "commonplugin_export.h"

#include <QList>
#include <QObject>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

#include <functional>

/**
 * What deletion and export ask of the four record tables and change in them.
 *
 * Levels are 0 for patients, 1 for studies, 2 for series, 3 for images; any other level has no records. Keys
 * are bound, as one list whatever their number; a call that changes something does so in one transaction, or
 * within the one that is open on the connection. For the thread of the connection.
 */
class COMMONPLUGIN_EXPORT DabaseHelper : public QObject
{
    Q_OBJECT

public:
    /// Works on Qt's default connection.
    explicit DabaseHelper(QObject *parent = nullptr);
    explicit DabaseHelper(const QSqlDatabase &db, QObject *parent = nullptr);

    /**
     * Cleans up behind the records of a level: the rows of `images` and `series` that stand for their images
     * and series, and the thumbnails of their images. It leaves the record tables alone, so that it may come
     * before the files are looked up. A row of `series` stays while images that are not among the records
     * have its UID.
     * @param sql the file query of the records; they are found by their keys, so it is not run
     * @return false where the database refused; nothing is changed then
     */
    bool DeleteDBTable(int level, const QString &sql, const QList<qlonglong> &pks);
    /// Deletes the rows with these keys, and by that all below them. @return false where the database refused
    bool deleteTable(int level, const QList<qlonglong> &pks);

    /// The parent's key of a record: of a study its patient, of a series its study, of an image its series. 0
    /// where there is no such record, and for a patient.
    qlonglong getPreFK(int level, qlonglong pk) const;
    /// How many records of a level a parent has.
    int getTableSize(int level, qlonglong parentPk) const;
    /// The keys of the records of a level that a parent has, in their own order: 1 for the studies of a
    /// patient, 2 for the series of a study, 3 for the images of a series.
    QList<qlonglong> getPkFromFk(int level, qlonglong fk) const;

    /// Why the last change was refused.
    QSqlError lastError() const { return m_error; }

private:
    bool run(const QString &sql, const QString &keys);
    bool inOneTransaction(const std::function<bool()> &change);

    QSqlDatabase m_db;
    QSqlError m_error;
};
