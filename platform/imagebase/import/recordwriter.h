#pragma once

#include "dicomheader.h"
#include "filewalker.h"
#include "interrupteddeletions.h"
#include "nativestatement.h"
#include "parentrecords.h"
#include "writtenuids.h"

#include <QSqlDatabase>
#include <QSqlError>

#include <optional>
#include <vector>

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
 * Enters images, and the records above them, into the four record tables, inside a transaction of the
 * caller's. One thread; what it remembers is good until forgetParents() or forgetAll().
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
    void lookForDeletions() { m_deletions.look(); }
    /// Whether such a deletion will take the instance when it is finished: what comes under its UID is a new
    /// one to it, and replace() makes it one.
    bool isCondemned(const KnownInstance &known) const { return m_deletions.willTake(known.pk); }
    /// The instance of this header has other bytes than before: as with a new one, its branch is updated now
    /// and no longer uploaded.
    bool noteNewContent(const DicomHeader &header);
    /// The file of this instance may be another one now: the cloud is not known to have it.
    bool unflag(const DicomHeader &header);

    /// To be called when another connection may have changed the records.
    void forgetAll();
    /// To be called after a rollback.
    void forgetParents() { m_parents.forget(); }
    const QSqlError &error() const { return m_error; }

private:
    qlonglong seriesOf(const DicomHeader &header);
    /// @param updatedPk of the image that the statement is to update; 0 where it inserts one
    bool writeImage(NativeStatement &statement, qlonglong seriesPk, const DicomHeader &header,
        const FilePlace &place, qlonglong updatedPk = 0);
    bool removeImage(qlonglong pk);
    bool passOn(bool good);

    QSqlDatabase m_db;
    NativeStatement m_find;
    NativeStatement m_insertImage;
    NativeStatement m_updateImage;
    const std::vector<AttributeInfo> m_imageAttributes;
    ParentRecords m_parents;
    InterruptedDeletions m_deletions;
    WrittenUids m_written;
    QSqlError m_error;
};
