#include "recorddeletion.h"

#include "compaction.h"
#include "configlocation.h"
#include "dabasehelper.h"
#include "deletedimages.h"
#include "deletionjournal.h"
#include "filequeries.h"
#include "filestore.h"
#include "importmarker.h"
#include "indexconnection.h"

#include <QSettings>
#include <QSqlQuery>
#include <QVariant>

namespace {

constexpr int everyFileSetting = 1;
constexpr qint64 progressPauseMs = 50;

bool isCopy(const QSqlQuery &row)
{
    return row.value(FileQueries::DeletionMarker).toString() == QLatin1String(copiedFileMarker);
}

} // namespace

RecordDeletion::RecordDeletion(const QSqlDatabase &db, bool everyFile, QObject *parent)
    : QObject(parent)
    , m_db(db)
    , m_everyFile(everyFile)
    , m_helper(new DabaseHelper(db, this))
{
    m_sinceProgress.start();
}

bool RecordDeletion::isEveryFileToGo()
{
    const QString file = ConfigLocation::checked(QLatin1String(ConfigKey::mainIni));
    return !file.isEmpty()
        && QSettings(file, QSettings::IniFormat).value(QLatin1String(ConfigKey::deleteMode)).toInt()
        == everyFileSetting;
}

DeletionReport RecordDeletion::run(const QString &table, const QList<qlonglong> &keys)
{
    DeletionReport report;
    const std::optional<RecordLevel> level = recordLevelOf(table);
    if (!level) {
        return report;
    }
    if (keys.isEmpty()) {
        runBranch(*level, keys);
        return report;
    }
    BegunDeletion deletion;
    deletion.level = *level;
    deletion.keys = keys;
    deletion.everyFile = m_everyFile;
    report.error = DeletionJournal(m_db).note(&deletion);
    return report.error.isValid() ? report : carryOut(deletion);
}

DeletionReport RecordDeletion::carryOut(const BegunDeletion &deletion)
{
    const DeletionJournal journal(m_db);
    DeletionReport report;
    WriteTransaction transaction(m_db);
    if (!transaction.isActive()) {
        report.error = transaction.error();
        report.isPending = !journal.forget(deletion.pk);
        return report;
    }
    const Compaction patience; // imports wait for as long as the files take
    const bool good = deleteAsBegun(deletion) && journal.forget(deletion.pk);
    if (!good || !transaction.commit()) {
        report.error = good ? transaction.error() : m_helper->lastError();
        report.isPending = true;
        transaction.rollback();
        for (int shown = int(RecordLevel::Image); shown >= int(RecordLevel::Patient); --shown) {
            tellChanged(RecordLevel(shown)); // the records are back
        }
    }
    report.left = m_disposal->left();
    report.removedFiles = m_disposal->removed();
    return report;
}

DeletionReport RecordDeletion::finishBegun(const QSqlDatabase &db)
{
    DeletionReport all;
    for (const BegunDeletion &begun : DeletionJournal(db).begun()) {
        RecordDeletion deletion(db, begun.everyFile);
        const DeletionReport report = deletion.carryOut(begun);
        all.left += report.left;
        all.removedFiles += report.removedFiles;
        if (report.error.isValid()) {
            all.error = report.error;
            all.isPending = report.isPending;
        }
    }
    return all;
}

/// Records that have got images since the deletion began keep these, and so stay themselves.
bool RecordDeletion::deleteAsBegun(const BegunDeletion &deletion)
{
    bool hasLater = false;
    const QList<qlonglong> images =
        DeletedImages::upTo(m_db, deletion.level, deletion.keys, deletion.lastImage, &hasLater);
    if (!hasLater) {
        return runBranch(deletion.level, deletion.keys);
    }
    beginFiles(RecordLevel::Image, images);
    removeCopies(images);
    return cleanUp(RecordLevel::Image, FileQueries::nameOfImagesPatient(), images)
        && deleteRecords(RecordLevel::Image, images);
}

bool RecordDeletion::runBranch(RecordLevel level, const QList<qlonglong> &keys)
{
    beginFiles(level, keys);
    switch (level) {
    case RecordLevel::Patient:
        return deletePatients(keys);
    case RecordLevel::Study:
        return deleteStudies(keys);
    case RecordLevel::Series:
        return deleteSeries(keys);
    case RecordLevel::Image:
        break;
    }
    return deleteImages(keys);
}

bool RecordDeletion::deletePatients(const QList<qlonglong> &keys)
{
    const QString query = FileQueries::ofDeletion(RecordLevel::Patient);
    removeFilesFound(query, keys);
    if (!cleanUp(RecordLevel::Patient, query, keys) || !deleteRecords(RecordLevel::Patient, keys)) {
        return false;
    }
    tellChanged(RecordLevel::Image);
    tellChanged(RecordLevel::Series);
    tellChanged(RecordLevel::Study);
    tellChanged(RecordLevel::Patient);
    return true;
}

bool RecordDeletion::deleteStudies(const QList<qlonglong> &keys)
{
    const QString query = FileQueries::ofDeletion(RecordLevel::Study);
    if (!cleanUp(RecordLevel::Study, query, keys)) {
        return false;
    }
    removeFilesFound(query, keys);
    const bool good = keys.isEmpty()
        || deletePatientOfOneStudy(m_helper->getPreFK(int(RecordLevel::Study), keys.constFirst()));
    if (!good || !deleteRecords(RecordLevel::Study, keys)) {
        return false;
    }
    tellChanged(RecordLevel::Image);
    tellChanged(RecordLevel::Series);
    tellChanged(RecordLevel::Study);
    return true;
}

bool RecordDeletion::deleteSeries(const QList<qlonglong> &keys)
{
    const QString query = FileQueries::ofDeletion(RecordLevel::Series);
    removeFilesFound(query, keys);
    if (!cleanUp(RecordLevel::Series, query, keys)) {
        return false;
    }
    const bool good = keys.isEmpty()
        || deleteStudyOfOneSeries(m_helper->getPreFK(int(RecordLevel::Series), keys.constFirst()));
    if (!good || !deleteRecords(RecordLevel::Series, keys)) {
        return false;
    }
    tellChanged(RecordLevel::Series);
    tellChanged(RecordLevel::Image);
    return true;
}

bool RecordDeletion::deleteImages(const QList<qlonglong> &keys)
{
    removeCopies(keys);
    if (!cleanUp(RecordLevel::Image, FileQueries::nameOfImagesPatient(), keys)) {
        return false;
    }
    const int image = int(RecordLevel::Image);
    const qlonglong series = keys.isEmpty() ? 0 : m_helper->getPreFK(image, keys.constFirst());
    if (series != 0 && m_helper->getTableSize(image, series) == keys.size()) {
        if (!deleteStudyOfOneSeries(m_helper->getPreFK(int(RecordLevel::Series), series))
            || !deleteRecords(RecordLevel::Series, {series})) {
            return false;
        }
        tellChanged(RecordLevel::Series);
    }
    if (!deleteRecords(RecordLevel::Image, keys)) {
        return false;
    }
    tellChanged(RecordLevel::Image);
    return true;
}

bool RecordDeletion::deleteStudyOfOneSeries(qlonglong study)
{
    if (m_helper->getTableSize(int(RecordLevel::Series), study) != 1) {
        return true;
    }
    if (!deletePatientOfOneStudy(m_helper->getPreFK(int(RecordLevel::Study), study))
        || !deleteRecords(RecordLevel::Study, {study})) {
        return false;
    }
    tellChanged(RecordLevel::Study);
    return true;
}

bool RecordDeletion::deletePatientOfOneStudy(qlonglong patient)
{
    if (m_helper->getTableSize(int(RecordLevel::Study), patient) != 1) {
        return true;
    }
    if (!deleteRecords(RecordLevel::Patient, {patient})) {
        return false;
    }
    tellChanged(RecordLevel::Patient);
    return true;
}

QVector<FileLeft> RecordDeletion::removeFiles(
    const QString &query, const QString &table, const QList<qlonglong> &keys)
{
    beginFiles(recordLevelOf(table).value_or(RecordLevel::Patient), keys);
    removeFilesFound(query, keys);
    return m_disposal->left();
}

void RecordDeletion::beginFiles(RecordLevel level, const QList<qlonglong> &keys)
{
    const bool everyFile = m_everyFile && level != RecordLevel::Image;
    m_disposal = std::make_unique<FileDisposal>(storeFolder(m_db.databaseName()), everyFile,
        everyFile ? QSet<QString>() : DeletedImages::sharedCopies(m_db, level, keys));
    m_done = 0;
    m_total = DeletedImages::count(m_db, level, keys);
}

void RecordDeletion::removeFilesFound(const QString &query, const QList<qlonglong> &keys)
{
    for (const qlonglong key : keys) {
        bool wasCopy = false;
        for (QSqlQuery rows = FileQueries::rows(query, key, m_db); rows.next(); countFile()) {
            wasCopy = isCopy(rows);
            m_disposal->removeFile(rows.value(FileQueries::DeletionFilePath).toString(), wasCopy);
        }
        m_disposal->removeFolders(wasCopy);
    }
}

/// Of images, whatever the setting; their folders stay.
void RecordDeletion::removeCopies(const QList<qlonglong> &keys)
{
    const QString query = FileQueries::ofDeletion(RecordLevel::Image);
    for (const qlonglong key : keys) {
        for (QSqlQuery rows = FileQueries::rows(query, key, m_db); rows.next(); countFile()) {
            m_disposal->removeFile(rows.value(FileQueries::DeletionFilePath).toString(), isCopy(rows));
        }
    }
}

void RecordDeletion::countFile()
{
    ++m_done;
    if (m_sinceProgress.elapsed() >= progressPauseMs) {
        m_sinceProgress.start();
        emit progress(m_done, m_total);
    }
}

bool RecordDeletion::cleanUp(RecordLevel level, const QString &query, const QList<qlonglong> &keys)
{
    return m_helper->DeleteDBTable(int(level), query, keys);
}

bool RecordDeletion::deleteRecords(RecordLevel level, const QList<qlonglong> &keys)
{
    return m_helper->deleteTable(int(level), keys);
}

void RecordDeletion::tellChanged(RecordLevel level)
{
    emit tableChanged(QLatin1String(recordTableName(level)));
}
