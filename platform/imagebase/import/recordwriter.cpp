#include "recordwriter.h"

#include "importmarker.h"
#include "recordstatements.h"
#include "transfertables.h"

#include <QSqlQuery>
#include <QVariant>

namespace {

bool isEmptyIndex(const QSqlDatabase &db)
{
    QSqlQuery any(db);
    return any.exec(QStringLiteral("SELECT 1 FROM imageformat LIMIT 1")) && !any.next();
}

} // namespace

RecordWriter::RecordWriter(const QSqlDatabase &db)
    : m_db(db)
    , m_find(db,
          QStringLiteral("SELECT pk, series_fk, FilePath, SourcePath, FileSize, FileTime, FileInode, "
                         "IrradiationEventUID FROM imageformat WHERE SOPInstanceUID = ?"))
    , m_insertImage(db, RecordStatements::insert(RecordLevel::Image))
    , m_updateImage(db, RecordStatements::updateImage())
    , m_imageAttributes(RecordStatements::attributesOf(RecordLevel::Image))
    , m_parents(db)
    , m_deletions(db)
    , m_written(isEmptyIndex(db))
{ }

bool RecordWriter::find(const QString &sopInstanceUid, std::optional<KnownInstance> *known)
{
    if (!m_written.mayHave(sopInstanceUid)) {
        return true;
    }
    m_find.bind(0, sopInstanceUid);
    const NativeStatement::Step step = m_find.step();
    if (step == NativeStatement::Step::Row) {
        KnownInstance &found = known->emplace();
        found.pk = m_find.integer(0);
        found.seriesPk = m_find.integer(1);
        found.place.filePath = m_find.text(2);
        found.place.sourcePath = m_find.text(3);
        found.place.stamp.size = m_find.integer(4);
        found.place.stamp.time = m_find.integer(5);
        found.place.stamp.inode = static_cast<quint64>(m_find.integer(6));
        found.place.copied = m_find.text(7) == QLatin1String(copiedFileMarker);
    } else if (step == NativeStatement::Step::Failed) {
        m_error = m_find.error();
    }
    m_find.reset();
    return step != NativeStatement::Step::Failed;
}

bool RecordWriter::insert(const DicomHeader &header, const FilePlace &place)
{
    const qlonglong seriesPk = seriesOf(header);
    if (seriesPk == 0) {
        return false;
    }
    m_written.add(header[Attribute::SOPInstanceUID]);
    return writeImage(m_insertImage, seriesPk, header, place);
}

bool RecordWriter::replace(const KnownInstance &known, const DicomHeader &header, const FilePlace &place)
{
    const qlonglong seriesPk = seriesOf(header);
    if (seriesPk == 0) {
        return false;
    }
    bool written = false;
    if (isCondemned(known)) {
        written = removeImage(known.pk) && writeImage(m_insertImage, seriesPk, header, place);
    } else {
        written = writeImage(m_updateImage, seriesPk, header, place, known.pk);
    }
    return written && (seriesPk == known.seriesPk || passOn(m_parents.removeEmpty(known.seriesPk)));
}

bool RecordWriter::removeImage(qlonglong pk)
{
    QSqlQuery query(m_db);
    query.prepare(QStringLiteral("DELETE FROM imageformat WHERE pk = ?"));
    query.addBindValue(pk);
    const bool good = query.exec();
    if (!good) {
        m_error = query.lastError();
    }
    return good;
}

bool RecordWriter::writeImage(NativeStatement &statement, qlonglong seriesPk, const DicomHeader &header,
    const FilePlace &place, qlonglong updatedPk)
{
    // The marker is ours alone: a file that claims it must not be taken for a copy and removed one day.
    static const QString marker = QLatin1String(copiedFileMarker);
    int next = 0;
    statement.bind(next++, seriesPk);
    for (const AttributeInfo &info : m_imageAttributes) {
        const QString &text = header[info.attribute];
        const bool ours = info.attribute == Attribute::IrradiationEventUID;
        if (ours && place.copied) {
            statement.bind(next++, marker);
        } else if (text.isEmpty() || (ours && text == marker)) {
            statement.bindNull(next++);
        } else {
            statement.bind(next++, text);
        }
    }
    statement.bind(next++, place.filePath);
    statement.bind(next++, place.sourcePath);
    statement.bind(next++, place.stamp.size);
    statement.bind(next++, place.stamp.time);
    statement.bind(next++, static_cast<qint64>(place.stamp.inode));
    if (updatedPk != 0) {
        statement.bind(next, updatedPk);
    }
    const bool good = statement.step() == NativeStatement::Step::Done;
    if (!good) {
        m_error = statement.error();
    }
    statement.reset();
    return good;
}

qlonglong RecordWriter::seriesOf(const DicomHeader &header)
{
    const qlonglong pk = m_parents.seriesOf(header);
    passOn(pk != 0);
    return pk;
}

bool RecordWriter::noteNewContent(const DicomHeader &header)
{
    return unflag(header) && passOn(m_parents.noteNewContent(header));
}

bool RecordWriter::unflag(const DicomHeader &header)
{
    TransferTables tables(m_db);
    const bool isGood = tables.flag(header[Attribute::SOPInstanceUID], false);
    if (!isGood) {
        m_error = tables.error();
    }
    return isGood;
}

/// Takes over why the parents failed. @return whether they did not
bool RecordWriter::passOn(bool good)
{
    if (!good) {
        m_error = m_parents.error();
    }
    return good;
}

void RecordWriter::forgetAll()
{
    forgetParents();
    m_written.giveUp();
}
