#include "temporaryindex.h"

#include "createconnection.h"
#include "importer.h"

#include <QDateTime>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

TemporaryIndex::TemporaryIndex()
{
    setDatabasePath(path());
    if (!createConnection()) {
        qFatal("no index at %s: %s", qPrintable(path()), qPrintable(connectionFailure().detail));
    }
}

TemporaryIndex::~TemporaryIndex()
{
    QSqlDatabase::database().close();
    QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
    setDatabasePath(QString());
}

QString TemporaryIndex::path() const
{
    return m_folder.filePath(QStringLiteral("index.db"));
}

QSqlDatabase TemporaryIndex::database() const
{
    return QSqlDatabase::database();
}

qlonglong TemporaryIndex::addPatient(const QString &name, const QString &id, const QString &updatedTime) const
{
    const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    query(QStringLiteral("INSERT INTO patient (PatientName, PatientID, updated_time) VALUES (?, ?, ?)"),
        {name, id, updatedTime.isEmpty() ? now : updatedTime});
    return query(QStringLiteral("SELECT max(pk) FROM patient")).toLongLong();
}

qlonglong TemporaryIndex::addStudy(qlonglong patient, const QString &uid) const
{
    query(QStringLiteral("INSERT INTO generalstudy (patient_fk, StudyInstanceUID) VALUES (?, ?)"),
        {patient, uid});
    return query(QStringLiteral("SELECT max(pk) FROM generalstudy")).toLongLong();
}

qlonglong TemporaryIndex::addSeries(
    qlonglong study, const QString &uid, const QString &modality, int number) const
{
    query(QStringLiteral("INSERT INTO generalseries (study_fk, SeriesInstanceUID, Modality, SeriesNumber) "
                         "VALUES (?, ?, ?, ?)"),
        {study, uid, modality, number});
    return query(QStringLiteral("SELECT max(pk) FROM generalseries")).toLongLong();
}

qlonglong TemporaryIndex::addImage(
    qlonglong series, const QString &uid, int instanceNumber, const QString &filePath) const
{
    query(QStringLiteral("INSERT INTO imageformat (series_fk, SOPInstanceUID, InstanceNumber, FilePath) "
                         "VALUES (?, ?, ?, ?)"),
        {series, uid, instanceNumber, filePath.isEmpty() ? QStringLiteral("/nowhere/") + uid : filePath});
    return query(QStringLiteral("SELECT max(pk) FROM imageformat")).toLongLong();
}

ImportReport TemporaryIndex::import(const QStringList &paths, ImportMode mode) const
{
    ImportRequest request;
    request.paths = paths;
    request.mode = mode;
    request.databasePath = path();
    return Importer(request).run();
}

QVariant TemporaryIndex::query(const QString &sql, const QVariantList &values) const
{
    QSqlQuery statement(database());
    bool good = statement.prepare(sql);
    for (const QVariant &value : values) {
        statement.addBindValue(value);
    }
    good = good && statement.exec();
    if (!good) {
        qFatal("%s: %s", qPrintable(sql), qPrintable(statement.lastError().text()));
    }
    return statement.next() ? statement.value(0) : QVariant();
}

int TemporaryIndex::count(const char *table) const
{
    return query(QStringLiteral("SELECT count(*) FROM %1").arg(QLatin1String(table))).toInt();
}
