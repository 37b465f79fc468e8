#pragma once

#include "batchfiles.h"
#include "filestore.h"
#include "importrequest.h"
#include "indexconnection.h"
#include "obsoletefiles.h"
#include "readfile.h"
#include "recordwriter.h"
#include "storemark.h"

#include <memory>

/**
 * The one that gives files their verdict: turns what readers found into records, batch by batch.
 *
 * A batch is one transaction; its files count in the report once it is committed, and a batch that fails
 * leaves neither records nor files in the store. Lives on the writer's thread.
 */
class IndexWriter
{
public:
    /// @param connection, store and cancelled outlive the writer; a long comparison ends when cancelled is
    /// set
    IndexWriter(const ImportRequest &request, const IndexConnection &connection, FileStore &store,
        const std::atomic<bool> &cancelled);
    ~IndexWriter();
    IndexWriter(const IndexWriter &) = delete;
    IndexWriter &operator=(const IndexWriter &) = delete;

    bool isOpen() const { return m_transaction != nullptr; }
    /// Takes the write lock; @return false where another connection holds it longer than the connection
    /// waits. After the last try end() says so.
    bool begin(bool lastTry);
    /// Gives one file its verdict inside the open batch. @return false where the batch cannot go on: end()
    /// says why
    bool write(ReadFile &file);
    /// After write() could not bring a file to its place, which its copyError says: goes on with the batch,
    /// in which nothing of that file stands.
    void resume();
    /// Commits the batch and adds it to the report. @return false where that failed; the batch is undone then
    bool commit();
    /// Undoes the open batch.
    void abandon();

    /// Whether the open batch has brought in what write() was given last, or found it there: false where an
    /// issue of the report is to say why not.
    bool hasTakenLast() const { return m_hasTakenLast; }
    /// The connection that the batch is open on, for what is to be committed with it.
    const QSqlDatabase &database() const { return m_db; }
    /// Files that have their verdict and are committed.
    const ImportReport &report() const { return m_report; }
    ImportEnd end() const { return m_end; }
    QString endDetail() const { return m_endDetail; }

private:
    bool writeFile(ReadFile &file);
    bool writeImage(ReadFile &file);
    bool writeKnown(ReadFile &file, const KnownInstance &known);
    bool isSameContent(const ReadFile &file, const KnownInstance &known) const;
    bool put(ReadFile &file, const KnownInstance *known);
    QString placeFor(const ReadFile &file, const KnownInstance *known) const;
    bool refreshPlace(const ReadFile &file, const KnownInstance &known);
    bool failOn(const QSqlError &error);
    bool failOnDatabase();
    void failOnCopy(int systemError);
    qint64 dataVersion() const;

    const ImportRequest &m_request;
    QSqlDatabase m_db;
    FileStore &m_store;
    const std::atomic<bool> &m_cancelled;
    qint64 m_dataVersion; ///< read before the records are, so that no change falls in between
    RecordWriter m_records;
    ObsoleteFiles m_obsoleteFiles;
    StoreMark m_mark;
    BatchFiles m_files; ///< of the open transaction
    std::unique_ptr<WriteTransaction> m_transaction;
    ImportReport m_report;
    ImportReport m_batch; ///< of the open transaction
    bool m_hasTakenLast = false;
    bool m_obsolete = false; ///< the open transaction noted files to remove
    ImportEnd m_end = ImportEnd::Complete;
    QString m_endDetail;
};
