// Imports on plain threads, without an event loop or a test framework on their stacks: where the thread
// sanitizer is on, nothing of the importer's own hides behind the libraries that it was told to overlook.
#include "createconnection.h"
#include "dicomfilebuilder.h"
#include "importer.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>
#include <thread>

namespace {

constexpr int fileCount = 300;

void writeFiles(const QTemporaryDir &folder)
{
    for (int i = 0; i < fileCount; ++i) {
        const QString uid = QStringLiteral("1.9.%1").arg(i);
        DicomFileBuilder()
            .patient(QStringLiteral("I%1").arg(i % 7), QStringLiteral("Import^%1").arg(i % 7))
            .uids(uid, uid + QStringLiteral(".1"), uid + QStringLiteral(".1.1"))
            .write(folder.filePath(QStringLiteral("%1.dcm").arg(i)));
    }
}

/// Imports on one thread while another watches, and stops it after a while where asked to.
ImportReport importWatched(const ImportRequest &request, qint64 cancelAfter)
{
    Importer importer(request);
    ImportReport report;
    std::atomic<bool> ended{false};
    std::thread writer([&importer, &report, &ended] {
        report = importer.run();
        ended = true;
    });
    std::thread watcher([&importer, &ended, cancelAfter] {
        while (!ended) {
            const ImportProgress progress = importer.progress();
            if (cancelAfter >= 0 && progress.found >= cancelAfter) {
                importer.cancel();
            }
            std::this_thread::yield();
        }
    });
    writer.join();
    watcher.join();
    return report;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir files;
    const QTemporaryDir index;
    writeFiles(files);
    setDatabasePath(index.filePath(QStringLiteral("index.db")));
    if (!createConnection()) {
        std::fprintf(stderr, "no index\n");
        return 1;
    }
    ImportRequest request;
    request.paths = QStringList{files.path()};
    request.databasePath = databasePath();
    const ImportReport first = importWatched(request, 20);
    request.mode = ImportMode::Copy;
    const ImportReport second = importWatched(request, -1);
    const qint64 entered = first.of(FileVerdict::New) + second.of(FileVerdict::New);
    std::printf("%lld of %d files entered\n", static_cast<long long>(entered), fileCount);
    return entered == fileCount && second.end == ImportEnd::Complete ? 0 : 1;
}
