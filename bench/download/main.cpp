// bench_download files|index TARGET ADDRESS USER PASSWORD LIST: fetches the series of a list (a line each:
// study, series, objects) from a DICOMweb service: into files of the folder TARGET, or into the index TARGET
// as the workstation does. Ends with one line of JSON.
#include "cloudsession.h"
#include "createconnection.h"
#include "downloadengine.h"
#include "objectsretrieve.h"
#include "processmemory.h"
#include "webclient.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSqlDatabase>

#include <cstdio>
#include <memory>
#include <vector>

namespace {

constexpr int atOnce = 4;
constexpr int wrongUse = 2;

struct Wanted
{
    QString study;
    QString series;
    int objects;
};

QVector<Wanted> wantedOf(const QString &list)
{
    QVector<Wanted> wanted;
    QFile file(list);
    file.open(QIODevice::ReadOnly);
    while (!file.atEnd()) {
        const QStringList parts = QString::fromLatin1(file.readLine()).split(QLatin1Char(' '));
        wanted.append({parts[0], parts[1], parts[2].toInt()});
    }
    return wanted;
}

/// Each over connections of its own, as the workstation has it.
class Files
{
public:
    Files(const CloudSession &session, QVector<Wanted> wanted, QString folder)
        : m_wanted(std::move(wanted))
        , m_folder(std::move(folder))
    {
        for (int i = 0; i < atOnce; ++i) {
            m_clients.push_back(std::make_unique<WebClient>(session.service));
            next(*m_clients.back());
        }
    }

private:
    void next(WebClient &client)
    {
        if (m_at == m_wanted.size()) {
            if (++m_idle == atOnce) {
                QCoreApplication::quit();
            }
            return;
        }
        const Wanted &wanted = m_wanted[m_at++];
        auto *request = new ObjectsRetrieve(
            client, QStringLiteral("studies/%1/series/%2").arg(wanted.study, wanted.series), m_folder);
        QObject::connect(request, &ObjectsRetrieve::finished, request,
            [this, request, &client, objects = wanted.objects](const WebFailure &failure) {
                if (!failure.isNone() || request->objects() != objects) {
                    qWarning("%d of %d objects, problem %d %s", request->objects(), objects,
                        int(failure.problem), qPrintable(failure.detail));
                    QCoreApplication::exit(1);
                }
                request->deleteLater();
                next(client);
            });
    }

    const QVector<Wanted> m_wanted;
    const QString m_folder;
    std::vector<std::unique_ptr<WebClient>> m_clients;
    int m_at = 0;
    int m_idle = 0;
};

void intoIndex(DownloadEngine &engine, const CloudSession &session, const QVector<Wanted> &wanted)
{
    QVector<DownloadStudy> studies;
    for (const Wanted &one : wanted) {
        if (studies.isEmpty() || studies.last().studyUid != one.study) {
            studies.append({one.study, one.study, {}});
        }
        studies.last().series.append({one.series, one.objects});
    }
    engine.setSession(session);
    for (const DownloadStudy &study : studies) {
        engine.add(study);
    }
    QObject::connect(&engine, &DownloadEngine::changed, &engine, [&engine, all = studies.size()] {
        int ended = 0;
        for (const DownloadTally &tally : engine.tallies()) {
            ended += tally.isEnded() ? 1 : 0;
            if (tally.state == DownloadState::Failed) {
                QCoreApplication::exit(1);
            }
        }
        if (ended == all) {
            QCoreApplication::quit();
        }
    });
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 7) {
        return wrongUse;
    }
    CloudSession session;
    session.service.address = QUrl(arguments[3]);
    session.service.authorization = WebService::basic(arguments[4], arguments[5]);
    session.service.proxy = QNetworkProxy::NoProxy;
    session.id = CloudSession::opaqueId();
    const QVector<Wanted> wanted = wantedOf(arguments[6]);
    std::unique_ptr<DownloadEngine> engine;
    std::unique_ptr<Files> files;
    const qint64 idle = ProcessMemory::residentKib();
    QElapsedTimer clock;
    if (arguments[1] == QLatin1String("index")) {
        setDatabasePath(arguments[2]);
        if (!createConnection()) {
            return 1;
        }
        clock.start();
        engine = std::make_unique<DownloadEngine>(arguments[2]);
        intoIndex(*engine, session, wanted);
    } else {
        clock.start();
        files = std::make_unique<Files>(session, wanted, arguments[2]);
    }
    const int result = QCoreApplication::exec();
    std::printf("{\"seconds\": %.3f, \"memory\": %lld}\n", double(clock.elapsed()) / 1000,
        static_cast<long long>(ProcessMemory::peakResidentKib() - idle));
    return result;
}
