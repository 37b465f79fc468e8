// The process that the fault tests kill, starve and feed:
//   faultprocess corpus FOLDER FILES VARIANT
//   faultprocess open INDEX
//   faultprocess import INDEX reference|copy keep|new FILELIMIT PATH...
// FILELIMIT is the most bytes that a file may have, 0 for no limit. Answers with one line of JSON.
#include "createconnection.h"
#include "faultcorpus.h"
#include "importer.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <csignal>
#include <cstdio>
#include <sys/resource.h>

namespace {

/// In the order of the enumerations.
const std::array<const char *, std::size_t(FileVerdict::Count)> verdictNames = {
    "new", "alreadyThere", "replaced", "mediaDirectory", "notDicom", "unreadable", "refused", "skipped"};
const std::array<const char *, 4> endNames = {"complete", "cancelled", "indexFailed", "diskFull"};
const std::array<const char *, 11> failureNames = {"none", "folderMissing", "cannotOpen", "readOnly",
    "locked", "notADatabase", "damaged", "foreign", "newer", "diskFull", "upgradeFailed"};

void answer(const QJsonObject &object)
{
    std::puts(QJsonDocument(object).toJson(QJsonDocument::Compact).constData());
}

int refused()
{
    const ConnectionFailure failure = connectionFailure();
    answer({{QStringLiteral("opened"), false},
        {QStringLiteral("reason"), QLatin1String(failureNames.at(std::size_t(failure.reason)))},
        {QStringLiteral("path"), failure.path}, {QStringLiteral("detail"), failure.detail}});
    return 0;
}

/// Reads every row, as a user who scrolls would sooner or later.
QJsonObject readAll()
{
    QJsonObject result{{QStringLiteral("opened"), true}};
    for (const char *table : {"patient", "generalstudy", "generalseries", "imageformat"}) {
        QSqlQuery query;
        query.exec(QStringLiteral("SELECT * FROM ") + QLatin1String(table));
        int rows = 0;
        while (query.next()) {
            ++rows;
        }
        result.insert(QLatin1String(table), rows);
        if (query.lastError().isValid()) {
            result.insert(QStringLiteral("error"), query.lastError().text());
        }
    }
    return result;
}

int openIndex(const QString &path)
{
    setDatabasePath(path);
    if (!createConnection()) {
        return refused();
    }
    answer(readAll());
    QSqlDatabase::database().close();
    return 0;
}

void limitFiles(rlim_t bytes)
{
    if (bytes > 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, bytes};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
}

QJsonObject describe(const ImportReport &report)
{
    QJsonObject counts;
    for (std::size_t i = 0; i < verdictNames.size(); ++i) {
        counts.insert(QLatin1String(verdictNames.at(i)), report.of(static_cast<FileVerdict>(i)));
    }
    QJsonArray issues;
    for (const ImportIssue &issue : report.issues()) {
        issues.append(QJsonObject{{QStringLiteral("path"), issue.path},
            {QStringLiteral("verdict"), QLatin1String(verdictNames.at(std::size_t(issue.verdict)))},
            {QStringLiteral("reason"), int(issue.reason)}, {QStringLiteral("detail"), issue.detail}});
    }
    return {{QStringLiteral("opened"), true},
        {QStringLiteral("end"), QLatin1String(endNames.at(std::size_t(report.end)))},
        {QStringLiteral("detail"), report.endDetail}, {QStringLiteral("found"), report.found()},
        {QStringLiteral("notReached"), report.notReached}, {QStringLiteral("counts"), counts},
        {QStringLiteral("issues"), issues}};
}

int import(const QStringList &arguments)
{
    ImportRequest request;
    request.databasePath = arguments.at(0);
    request.mode = arguments.at(1) == QLatin1String("copy") ? ImportMode::Copy : ImportMode::Reference;
    request.policy =
        arguments.at(2) == QLatin1String("new") ? DuplicatePolicy::TakeNew : DuplicatePolicy::KeepOld;
    request.paths = arguments.mid(4);
    setDatabasePath(request.databasePath);
    if (!createConnection()) {
        return refused();
    }
    QSqlDatabase::database().close();
    limitFiles(arguments.at(3).toULongLong());
    answer(describe(Importer(request).run()));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const QString command = arguments.value(0);
    if (command == QLatin1String("corpus") && arguments.size() == 4) {
        writeFaultCorpus(arguments.at(1), arguments.at(2).toInt(), arguments.at(3).toInt());
        return 0;
    }
    if (command == QLatin1String("open") && arguments.size() == 2) {
        return openIndex(arguments.at(1));
    }
    if (command == QLatin1String("import") && arguments.size() >= 6) {
        return import(arguments.mid(1));
    }
    std::fputs(
        "corpus FOLDER FILES VARIANT | open INDEX | import INDEX MODE POLICY FILELIMIT PATH...\n", stderr);
    return 2;
}
