#include "exportrun.h"

#include "exportlist.h"
#include "filecopy.h"
#include "indexconnection.h"
#include "mediawriter.h"
#include "systemtext.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStorageInfo>

namespace {

/// The folder in which what is made gets its place.
QString folderOf(const ExportRequest &request)
{
    return request.format == ExportFormat::Zip ? QFileInfo(request.target).absolutePath()
                                               : QDir(request.target).absolutePath();
}

qint64 sumOf(const QVector<ExportItem> &items)
{
    qint64 bytes = 0;
    for (const ExportItem &item : items) {
        bytes += item.size;
    }
    return bytes;
}

} // namespace

ExportRun::ExportRun(const ExportRequest &request, const std::atomic<bool> &cancelled, ExportTally &tally)
    : m_request(request)
    , m_cancelled(cancelled)
    , m_tally(tally)
{ }

ExportReport ExportRun::run()
{
    QElapsedTimer time;
    time.start();
    m_report.place = m_request.target;
    work();
    if (m_cancelled && m_report.end != ExportEnd::Complete) {
        m_report.end = ExportEnd::Cancelled;
    }
    m_report.isReadBack = m_request.check && m_report.end == ExportEnd::Complete && m_report.files > 0;
    m_report.elapsedMs = time.elapsed();
    begin(Phase::Done);
    return m_report;
}

bool ExportRun::end(ExportEnd how, const QString &detail)
{
    m_report.end = how;
    m_report.endDetail = detail;
    return false;
}

void ExportRun::begin(Phase phase)
{
    m_tally.begin(phase, m_items.size(), sumOf(m_items));
}

void ExportRun::fail(const ExportItem &item, const ExportWriter::Outcome &outcome)
{
    m_report.failures.append({item, *outcome.problem, outcome.detail});
}

void ExportRun::work()
{
    if (!list() || !hasRoom()) {
        return;
    }
    const ExportStage stage(folderOf(m_request));
    if (stage.error() == 0 && !hasPlace()) {
        return;
    }
    if (stage.error() == 0) {
        writeAll(stage);
    } else {
        end(isDiskFull(stage.error()) ? ExportEnd::DiskFull : ExportEnd::TargetFailed,
            systemText(stage.error()));
    }
}

/// A file set does not mix with another.
bool ExportRun::hasPlace()
{
    const QDir folder(folderOf(m_request));
    const bool isTaken = m_request.format == ExportFormat::Media
        && (folder.exists(QLatin1String(MediaWriter::directoryName))
            || folder.exists(QLatin1String(MediaWriter::filesFolder)));
    return !isTaken || end(ExportEnd::TargetTaken);
}

bool ExportRun::list()
{
    m_items = m_request.items;
    if (m_items.isEmpty()) {
        const IndexConnection connection(m_request.databasePath);
        if (!connection.isOpen()) {
            return end(ExportEnd::IndexFailed, connection.failure().detail);
        }
        QSqlError error;
        m_items = listExport(connection.database(), m_request, m_cancelled, &error);
        if (error.isValid()) {
            return end(ExportEnd::IndexFailed, error.text());
        }
    }
    if (m_cancelled) {
        return end(ExportEnd::Cancelled);
    }
    return !m_items.isEmpty() || end(ExportEnd::Empty);
}

/// A compressed archive may need less than anyone can say.
bool ExportRun::hasRoom()
{
    const QStorageInfo disk(folderOf(m_request));
    const qint64 needed = sumOf(m_items);
    const bool unknown = m_request.format == ExportFormat::Zip && m_request.compress;
    if (unknown || !disk.isValid() || disk.bytesAvailable() >= needed) {
        return true;
    }
    m_report.needed = needed;
    m_report.available = disk.bytesAvailable();
    return end(ExportEnd::DiskFull);
}

void ExportRun::writeAll(const ExportStage &stage)
{
    std::unique_ptr<ExportWriter> writer;
    do {
        writer.reset(); // it may have something to say to its file until it is gone
        writer = ExportWriter::make(m_request, stage, m_cancelled);
    } while (!m_cancelled && m_report.end == ExportEnd::Complete && !writePass(*writer));
    if (m_cancelled) {
        end(ExportEnd::Cancelled);
    } else if (m_report.end == ExportEnd::Complete) {
        finish(*writer, stage);
    }
}

void ExportRun::finish(ExportWriter &writer, const ExportStage &stage)
{
    if (const std::optional<ExportWriter::Outcome> bad = writer.finish()) {
        const bool differs = bad->problem == ExportProblem::Differs;
        end(bad->isFull   ? ExportEnd::DiskFull
                : differs ? ExportEnd::NotReadBack
                          : ExportEnd::TargetFailed,
            bad->detail);
        return;
    }
    stage.sync();
    if (m_request.check) {
        checkAll(writer);
    }
    if (m_cancelled) {
        end(ExportEnd::Cancelled);
    } else if (m_report.end == ExportEnd::Complete) {
        placeAll(writer.pieces(), stage);
        stage.sync();
    }
}

/// @return false where all must be written anew, without the file that has spoilt it, or where the export has
/// ended
bool ExportRun::writePass(ExportWriter &writer)
{
    begin(Phase::Writing);
    QVector<ExportItem> written;
    for (int i = 0; i < m_items.size(); ++i) {
        const ExportItem item = m_items.at(i);
        const ExportWriter::Outcome outcome = writeOne(writer, item);
        m_tally.count(item);
        if (m_cancelled) {
            return false;
        }
        const bool isTarget = outcome.isSpoilt && outcome.problem == ExportProblem::NotWritten;
        if (outcome.isFull || isTarget) {
            return end(outcome.isFull ? ExportEnd::DiskFull : ExportEnd::TargetFailed, outcome.detail);
        }
        if (outcome.problem) {
            fail(item, outcome);
        }
        if (outcome.isSpoilt) {
            m_items = written + m_items.mid(i + 1);
            return false;
        }
        if (!outcome.problem || outcome.problem == ExportProblem::NotInDirectory) {
            written.append(item);
        }
    }
    m_items = written;
    return true;
}

ExportWriter::Outcome ExportRun::writeOne(ExportWriter &writer, const ExportItem &item)
{
    // The system would take a path with a zero byte for a shorter one.
    const bool isPath = !item.source.contains(QChar::Null) && QFileInfo(item.source).isAbsolute();
    return isPath ? writer.write(item)
                  : ExportWriter::Outcome{ExportProblem::SourceMissing, {}, false, false};
}

void ExportRun::checkAll(ExportWriter &writer)
{
    begin(Phase::Checking);
    QVector<ExportItem> good;
    for (const ExportItem &item : qAsConst(m_items)) {
        const ExportWriter::Outcome outcome = writer.check(item);
        if (m_cancelled) {
            return;
        }
        m_tally.count(item);
        if (!outcome.problem) {
            good.append(item);
            continue;
        }
        fail(item, outcome);
        if (!writer.pieces().isEmpty()) {
            end(ExportEnd::NotReadBack, outcome.detail);
            return;
        }
    }
    m_items = good;
    const std::optional<ExportWriter::Outcome> bad = writer.checkEnd();
    if (bad && !m_items.isEmpty()) {
        end(ExportEnd::NotReadBack, bad->detail);
    }
}

/// From here on it is too late to cancel: a rename takes no time.
void ExportRun::placeAll(const QStringList &pieces, const ExportStage &stage)
{
    begin(Phase::Placing);
    if (pieces.isEmpty()) {
        placeFiles(stage);
        return;
    }
    const int error = m_items.isEmpty() ? 0 : stage.moveAllOut(pieces, m_request.format == ExportFormat::Zip);
    if (error != 0) {
        end(ExportEnd::TargetFailed, systemText(error));
        return;
    }
    m_report.files = m_items.size();
    m_report.bytes = sumOf(m_items);
}

/// Files come folder by folder.
void ExportRun::noteFolder(const QString &name)
{
    if (m_report.folders.isEmpty() || m_report.folders.constLast() != name) {
        m_report.folders.removeOne(name);
        m_report.folders.append(name);
    }
}

void ExportRun::placeFiles(const ExportStage &stage)
{
    for (const ExportItem &item : qAsConst(m_items)) {
        const int error = stage.moveOut(item.name, m_request.format == ExportFormat::KeyFolders);
        m_tally.count(item);
        if (error == 0) {
            ++m_report.files;
            noteFolder(item.name.section(QLatin1Char('/'), 0, 0));
            m_report.bytes += item.size;
        } else {
            const bool taken = error == EEXIST;
            fail(item,
                {taken ? ExportProblem::NameTaken : ExportProblem::NotWritten,
                    taken ? QString() : systemText(error), false, false});
        }
    }
}
