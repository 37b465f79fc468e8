#include "parserace.h"

#include "measurement.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace {

std::vector<QByteArray> filesBelow(const QString &folder)
{
    std::vector<QByteArray> files;
    QDirIterator walk(folder, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        files.push_back(QFile::encodeName(walk.next()));
    }
    std::sort(files.begin(), files.end());
    return files;
}

QByteArray digestOf(const std::vector<HeaderIds> &all)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const HeaderIds &ids : all) {
        for (const QByteArray &value :
            {ids.patientId, ids.patientName, ids.studyUid, ids.seriesUid, ids.instanceUid}) {
            hash.addData(value);
            hash.addData("\n", 1);
        }
    }
    return hash.result().toHex();
}

} // namespace

int runParseRace(
    const QString &contender, const QString &folder, const std::function<HeaderParser()> &makeParser)
{
    const std::vector<QByteArray> files = filesBelow(folder);
    std::vector<HeaderIds> ids(files.size());
    std::atomic<std::size_t> next{0};
    std::atomic<int> failed{0};
    const auto work = [&] {
        const HeaderParser parse = makeParser();
        for (std::size_t at = next++; at < files.size(); at = next++) {
            failed += parse(files[at], &ids[at]) ? 0 : 1;
        }
    };
    QElapsedTimer time;
    time.start();
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i) {
        threads.emplace_back(work);
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    const double seconds = double(time.nsecsElapsed()) / 1e9;
    Measurement::print({{QStringLiteral("contender"), contender},
        {QStringLiteral("files"), qint64(files.size())}, {QStringLiteral("failed"), failed.load()},
        {QStringLiteral("seconds"), seconds}, {QStringLiteral("rate"), double(files.size()) / seconds},
        {QStringLiteral("digest"), QString::fromLatin1(digestOf(ids))}});
    return failed == 0 && !files.empty() ? 0 : 1;
}
