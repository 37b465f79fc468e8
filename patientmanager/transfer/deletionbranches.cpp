#include "deletionbranches.h"

#include "dabasehelper.h"
#include "deletedimages.h"
#include "filequeries.h"
#include "filestore.h"
#include "importmarker.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <iterator>

namespace {

constexpr qint64 progressPauseMs = 50;

bool isCopy(const QSqlQuery &row)
{
    return row.value(FileQueries::DeletionMarker).toString() == QLatin1String(copiedFileMarker);
}

} // namespace

DeletionBranches::DeletionBranches(
    const QSqlDatabase &db, bool everyFile, DabaseHelper *helper, Listener listener)
    : m_db(db)
    , m_everyFile(everyFile)
    , m_helper(helper)
    , m_listener(std::move(listener))
{
    m_sinceProgress.start();
}

bool DeletionBranches::run(RecordLevel level, const QList<qlonglong> &keys)
{
    // Of images only copies ever go.
    if (!beginFiles(level, keys, m_everyFile && level != RecordLevel::Image)) {
        return false;
    }
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

bool DeletionBranches::runUpTo(qlonglong newest, RecordLevel level, const QList<qlonglong> &keys)
{
    QList<qlonglong> whole;
    QList<qlonglong> mixed;
    if (!DeletedImages::split(m_db, level, keys, newest, &whole, &mixed, &m_error)) {
        return false;
    }
    if (mixed.isEmpty()) {
        return run(level, whole);
    }
    if (!whole.isEmpty() && !run(level, whole)) {
        return false;
    }
    const auto below = RecordLevel(int(level) + 1);
    QList<qlonglong> children;
    if (!DeletedImages::keysBelow(m_db, level, mixed, below, &children, &m_error)) {
        return false;
    }
    if (below != RecordLevel::Image) {
        return runUpTo(newest, below, children);
    }
    QList<qlonglong> old;
    std::copy_if(children.cbegin(), children.cend(), std::back_inserter(old),
        [newest](qlonglong image) { return image <= newest; });
    return deleteImagesAlone(old);
}

/// Whatever their number, their series has others, which stay.
bool DeletionBranches::deleteImagesAlone(const QList<qlonglong> &keys)
{
    if (!beginFiles(RecordLevel::Image, keys, m_everyFile)) {
        return false;
    }
    removeOfImages(keys);
    return cleanUp(RecordLevel::Image, FileQueries::nameOfImagesPatient(), keys)
        && deleteRecords(RecordLevel::Image, keys);
}

bool DeletionBranches::deletePatients(const QList<qlonglong> &keys)
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

bool DeletionBranches::deleteStudies(const QList<qlonglong> &keys)
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

bool DeletionBranches::deleteSeries(const QList<qlonglong> &keys)
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

bool DeletionBranches::deleteImages(const QList<qlonglong> &keys)
{
    removeOfImages(keys);
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

bool DeletionBranches::deleteStudyOfOneSeries(qlonglong study)
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

bool DeletionBranches::deletePatientOfOneStudy(qlonglong patient)
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

bool DeletionBranches::removeFiles(RecordLevel level, const QString &query, const QList<qlonglong> &keys)
{
    if (!beginFiles(level, keys, m_everyFile && level != RecordLevel::Image)) {
        return false;
    }
    removeFilesFound(query, keys);
    return true;
}

/// @return false where it cannot be said which files others need: none may go then
bool DeletionBranches::beginFiles(RecordLevel level, const QList<qlonglong> &keys, bool everyFile)
{
    QSet<QString> shared;
    if (!everyFile && !DeletedImages::sharedCopies(m_db, level, keys, &shared, &m_error)) {
        return false;
    }
    m_left = left();
    m_removed = removed();
    m_disposal = std::make_unique<FileDisposal>(storeFolder(m_db.databaseName()), everyFile, shared);
    m_done = 0;
    m_total = DeletedImages::count(m_db, level, keys);
    return true;
}

void DeletionBranches::removeFilesFound(const QString &query, const QList<qlonglong> &keys)
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

/// Their folders stay.
void DeletionBranches::removeOfImages(const QList<qlonglong> &keys)
{
    const QString query = FileQueries::ofDeletion(RecordLevel::Image);
    for (const qlonglong key : keys) {
        for (QSqlQuery rows = FileQueries::rows(query, key, m_db); rows.next(); countFile()) {
            m_disposal->removeFile(rows.value(FileQueries::DeletionFilePath).toString(), isCopy(rows));
        }
    }
}

void DeletionBranches::countFile()
{
    ++m_done;
    if (m_done == m_total || m_sinceProgress.elapsed() >= progressPauseMs) {
        m_sinceProgress.start();
        m_listener.progress(m_done, m_total);
    }
}

bool DeletionBranches::cleanUp(RecordLevel level, const QString &query, const QList<qlonglong> &keys)
{
    return m_helper->DeleteDBTable(int(level), query, keys);
}

bool DeletionBranches::deleteRecords(RecordLevel level, const QList<qlonglong> &keys)
{
    return m_helper->deleteTable(int(level), keys);
}

void DeletionBranches::tellChanged(RecordLevel level) const
{
    m_listener.changed(level);
}

QSqlError DeletionBranches::error() const
{
    return m_error.isValid() ? m_error : m_helper->lastError();
}

QVector<FileLeft> DeletionBranches::left() const
{
    return m_disposal ? m_left + m_disposal->left() : m_left;
}

qint64 DeletionBranches::removed() const
{
    return m_disposal ? m_removed + m_disposal->removed() : m_removed;
}
