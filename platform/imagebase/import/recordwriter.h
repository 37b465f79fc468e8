#pragma once

#include "dicomheader.h"
#include "filewalker.h"
#include "nativestatement.h"

#include <QHash>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <array>
#include <optional>

/// Where an instance's file lies, and which file it was made from.
struct FilePlace
{
    QString filePath;
    QString sourcePath; ///< null where filePath is the source itself
    FileStamp stamp; ///< of the source
    bool copied = false; ///< our own copy in the store: marked as such, so that a deletion may remove it
};

/// An instance as the index has it.
struct KnownInstance
{
    qlonglong pk = 0;
    qlonglong seriesPk = 0;
    FilePlace place;

    QString source() const { return place.sourcePath.isNull() ? place.filePath : place.sourcePath; }
};

/**
 * The statements by which an import changes the four record tables, inside a transaction of the caller's.
 *
 * Parents are found or made by their identity: a patient is (PatientID, IssuerOfPatientID, PatientName,
 * PatientBirthDate); without a PatientID it is the same patient only within the same study, so that strangers
 * never merge. One thread; the keys that it remembers are good until forgetParents().
 */
class RecordWriter
{
public:
    explicit RecordWriter(const QSqlDatabase &db);

    /// Each answers false on a database error, which error() then holds.
    bool find(const QString &sopInstanceUid, std::optional<KnownInstance> *known);
    bool insert(const DicomHeader &header, const FilePlace &place);
    /// Gives a known instance another file and header, and removes parents that this leaves empty.
    bool replace(const KnownInstance &known, const DicomHeader &header, const FilePlace &place);
    /// Looks, at the start of a transaction, for deletions that were interrupted.
    void lookForDeletions();
    /// Whether such a deletion will take the instance when it is finished: what comes under its UID is a new
    /// one to it, and replace() makes it one.
    bool isCondemned(const KnownInstance &known) const;
    /// The instance of this header has other bytes than before: as with a new one, its branch is updated now
    /// and no longer uploaded.
    bool noteNewContent(const DicomHeader &header);
    /// Notes a file that no record names any more.
    bool noteObsolete(const QString &filePath);
    /// True for a file that was noted so and is still to be removed.
    bool isObsolete(const QString &filePath) const;

    /// To be called when another connection may have changed the records.
    void forgetAll();
    /// To be called after a rollback.
    void forgetParents();
    const QSqlError &error() const { return m_error; }

private:
    bool isKnown(const QString &sopInstanceUid) const;
    void remember(const QString &sopInstanceUid);
    qlonglong series(const DicomHeader &header);
    qlonglong patient(const DicomHeader &header);
    qlonglong child(RecordLevel level, qlonglong parent, const QString &uid, const DicomHeader &header);
    qlonglong insertRecord(RecordLevel level, qlonglong parent, const DicomHeader &header);
    qlonglong firstKey(QSqlQuery &query);
    bool writeImage(
        NativeStatement &statement, qlonglong seriesPk, const DicomHeader &header, const FilePlace &place);
    bool removeImage(qlonglong pk);
    bool removeEmptyParents(qlonglong seriesPk);
    bool run(QSqlQuery &query);

    static constexpr std::size_t parentLevels = 3;

    QSqlDatabase m_db;
    NativeStatement m_find;
    NativeStatement m_insertImage;
    NativeStatement m_updateImage;
    QSqlQuery m_findPatient;
    QSqlQuery m_findNamelessPatient;
    std::array<QSqlQuery, parentLevels> m_findChild;
    std::array<QSqlQuery, parentLevels> m_insertRecord;
    std::array<QHash<QString, qlonglong>, parentLevels> m_known;
    std::array<QString, 6> m_lastIdentity;
    qlonglong m_lastSeries = 0;
    QSet<uint> m_written; ///< hashes of the UIDs written, while they are all that the index has
    bool m_writtenIsAll = false;
    QSqlError m_error;
    qlonglong m_lastCondemned = 0; ///< the newest image that an interrupted deletion may be about
};
