#include "exporter.h"

#include "exportlist.h"
#include "exportstage.h"
#include "exportwriter.h"
#include "indexconnection.h"
#include "mediawriter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStorageInfo>

#include <atomic>
#include <cerrno>
#include <cstring>

namespace {

QString systemText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

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

struct Exporter::Private
{
    using Phase = ExportProgress::Phase;

    explicit Private(ExportRequest asked)
        : request(std::move(asked))
    { }

    void work();
    bool list();
    bool hasRoom();
    void writeAll(const ExportStage &stage);
    bool writePass(ExportWriter &writer);
    void checkAll(ExportWriter &writer);
    void placeAll(const QStringList &pieces, const ExportStage &stage);
    void placeFiles(const ExportStage &stage);
    bool end(ExportEnd how, const QString &detail = {});
    void begin(Phase next);
    void count(const ExportItem &item);
    void fail(const ExportItem &item, const ExportWriter::Outcome &outcome);

    const ExportRequest request;
    ExportReport report;
    QVector<ExportItem> items; ///< that are still to be brought to their places
    std::atomic<bool> cancelled{false};
    std::atomic<Phase> phase{Phase::Listing};
    std::atomic<qint64> files{0};
    std::atomic<qint64> bytes{0};
    std::atomic<qint64> allFiles{0};
    std::atomic<qint64> allBytes{0};
};

Exporter::Exporter(ExportRequest request)
    : d(std::make_unique<Private>(std::move(request)))
{ }

Exporter::~Exporter() = default;

const ExportRequest &Exporter::request() const
{
    return d->request;
}

void Exporter::cancel()
{
    d->cancelled = true;
}

ExportProgress Exporter::progress() const
{
    ExportProgress progress;
    progress.phase = d->phase;
    progress.files = d->files;
    progress.bytes = d->bytes;
    progress.allFiles = d->allFiles;
    progress.allBytes = d->allBytes;
    return progress;
}

ExportReport Exporter::run()
{
    QElapsedTimer time;
    time.start();
    d->report.place = d->request.target;
    d->work();
    if (d->cancelled && d->report.end != ExportEnd::Complete) {
        d->report.end = ExportEnd::Cancelled;
    }
    d->report.elapsedMs = time.elapsed();
    d->begin(ExportProgress::Phase::Done);
    return d->report;
}

bool Exporter::Private::end(ExportEnd how, const QString &detail)
{
    report.end = how;
    report.endDetail = detail;
    return false;
}

void Exporter::Private::begin(Phase next)
{
    phase = next;
    files = 0;
    bytes = 0;
    allFiles = items.size();
    allBytes = sumOf(items);
}

void Exporter::Private::count(const ExportItem &item)
{
    ++files;
    bytes += item.size;
}

void Exporter::Private::fail(const ExportItem &item, const ExportWriter::Outcome &outcome)
{
    report.failures.append({item, *outcome.problem, outcome.detail});
}

void Exporter::Private::work()
{
    if (!list() || !hasRoom()) {
        return;
    }
    const QString folder = folderOf(request);
    if (request.format == ExportFormat::Media
        && (QFileInfo::exists(QDir(folder).filePath(QLatin1String(MediaWriter::directoryName)))
            || QFileInfo::exists(QDir(folder).filePath(QLatin1String(MediaWriter::filesFolder))))) {
        end(ExportEnd::TargetTaken);
        return;
    }
    const ExportStage stage(folder);
    if (stage.error() != 0) {
        end(stage.error() == ENOSPC ? ExportEnd::DiskFull : ExportEnd::TargetFailed,
            systemText(stage.error()));
        return;
    }
    writeAll(stage);
}

bool Exporter::Private::list()
{
    items = request.items;
    if (items.isEmpty()) {
        const IndexConnection connection(request.databasePath);
        if (!connection.isOpen()) {
            return end(ExportEnd::IndexFailed, connection.failure().detail);
        }
        QSqlError error;
        items = listExport(connection.database(), request, cancelled, &error);
        if (error.isValid()) {
            return end(ExportEnd::IndexFailed, error.text());
        }
    }
    if (cancelled) {
        return end(ExportEnd::Cancelled);
    }
    return !items.isEmpty() || end(ExportEnd::Empty);
}

/// A compressed archive may need less than anyone can say.
bool Exporter::Private::hasRoom()
{
    const QStorageInfo disk(folderOf(request));
    const qint64 needed = sumOf(items);
    const bool unknown = request.format == ExportFormat::Zip && request.compress;
    if (unknown || !disk.isValid() || disk.bytesAvailable() >= needed) {
        return true;
    }
    report.needed = needed;
    report.available = disk.bytesAvailable();
    return end(ExportEnd::DiskFull);
}

void Exporter::Private::writeAll(const ExportStage &stage)
{
    std::unique_ptr<ExportWriter> writer;
    do {
        writer = ExportWriter::make(request, stage, cancelled);
    } while (!cancelled && report.end == ExportEnd::Complete && !writePass(*writer));
    if (cancelled || report.end != ExportEnd::Complete) {
        end(cancelled ? ExportEnd::Cancelled : report.end, report.endDetail);
        return;
    }
    if (const std::optional<ExportWriter::Outcome> bad = writer->finish()) {
        end(bad->isFull                                  ? ExportEnd::DiskFull
                : bad->problem == ExportProblem::Differs ? ExportEnd::NotReadBack
                                                         : ExportEnd::TargetFailed,
            bad->detail);
        return;
    }
    stage.sync();
    if (request.check) {
        checkAll(*writer);
    }
    if (cancelled) {
        end(ExportEnd::Cancelled);
    } else if (report.end == ExportEnd::Complete) {
        placeAll(writer->pieces(), stage);
        stage.sync();
    }
}

/// @return false where all must be written anew, without the file that has spoilt it
bool Exporter::Private::writePass(ExportWriter &writer)
{
    begin(Phase::Writing);
    QVector<ExportItem> written;
    for (int i = 0; i < items.size() && !cancelled; ++i) {
        const ExportItem &item = items.at(i);
        const ExportWriter::Outcome outcome =
            item.source.contains(QChar::Null) || !QFileInfo(item.source).isAbsolute()
            ? ExportWriter::Outcome{ExportProblem::SourceMissing, {}, false, false}
            : writer.write(item);
        count(item);
        if (cancelled) {
            break;
        }
        if (outcome.isFull) {
            return end(ExportEnd::DiskFull, outcome.detail);
        }
        if (outcome.isSpoilt && outcome.problem == ExportProblem::NotWritten) {
            return end(ExportEnd::TargetFailed, outcome.detail);
        }
        if (outcome.problem) {
            fail(item, outcome);
        }
        if (outcome.isSpoilt) {
            items = written + items.mid(i + 1);
            return items.isEmpty();
        }
        if (!outcome.problem || outcome.problem == ExportProblem::NotInDirectory) {
            written.append(item);
        }
    }
    items = written;
    return true;
}

void Exporter::Private::checkAll(ExportWriter &writer)
{
    begin(Phase::Checking);
    QVector<ExportItem> good;
    for (const ExportItem &item : qAsConst(items)) {
        const ExportWriter::Outcome outcome = writer.check(item);
        if (cancelled) {
            return;
        }
        count(item);
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
    items = good;
}

/// From here on it is too late to cancel: a rename takes no time.
void Exporter::Private::placeAll(const QStringList &pieces, const ExportStage &stage)
{
    begin(Phase::Placing);
    if (pieces.isEmpty()) {
        placeFiles(stage);
        return;
    }
    for (const QString &piece : items.isEmpty() ? QStringList() : pieces) {
        const int error = stage.moveOut(piece, request.format == ExportFormat::Zip);
        if (error != 0) {
            end(ExportEnd::TargetFailed, systemText(error));
            return;
        }
    }
    report.files = items.size();
    report.bytes = sumOf(items);
}

void Exporter::Private::placeFiles(const ExportStage &stage)
{
    for (const ExportItem &item : qAsConst(items)) {
        const int error = stage.moveOut(item.name, request.format == ExportFormat::KeyFolders);
        count(item);
        if (error == 0) {
            ++report.files;
            report.bytes += item.size;
        } else {
            const bool taken = error == EEXIST;
            fail(item,
                {taken ? ExportProblem::NameTaken : ExportProblem::NotWritten,
                    taken ? QString() : systemText(error), false, false});
        }
    }
}
