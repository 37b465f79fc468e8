#include "anonymizepreparation.h"

#include "anonymizetext.h"
#include "createconnection.h"
#include "importreporttext.h"
#include "indexconnection.h"
#include "indexjob.h"
#include "recordfiles.h"
#include "sitekey.h"

#include <QDir>

namespace {

/// What was found on the thread; the sentences about it are made on the GUI's.
struct Found
{
    QStringList files;
    QString keyPath;
    SiteKey::Result key;
    ConnectionFailure failure;
    bool hasFolder = false;
};

Found lookUp(const QString &databasePath, const QList<qlonglong> &studies, const std::atomic<bool> &stop)
{
    Found found;
    const IndexConnection connection(databasePath);
    found.failure = connection.failure();
    if (connection.isOpen()) {
        found.files = recordFiles(connection.database(), RecordLevel::Study, studies, &stop).paths;
    }
    return found;
}

QString faultOf(const Found &found, const QString &folder)
{
    const QString key = AnonymizeText::keyProblem(found.key, found.keyPath);
    const QString index = connectionFailureText(found.failure);
    return !key.isEmpty()       ? key
        : !index.isEmpty()      ? index
        : found.files.isEmpty() ? AnonymizeText::noImages()
        : !found.hasFolder      ? AnonymizeText::noFolder(folder)
                                : QString();
}

} // namespace

Q_DECLARE_METATYPE(Found)

AnonymizePreparation::AnonymizePreparation(QObject *parent)
    : QObject(parent)
{ }

void AnonymizePreparation::begin(
    const DeidentifyRequest &request, const QList<qlonglong> &studies, bool makesFolder)
{
    stop();
    const auto work = [path = databasePath(), keyPath = SiteKey::usualPath(), studies, makesFolder,
                          folder = request.folder](
                          const std::atomic<bool> &stop, const IndexJob::Progress &) {
        Found found = lookUp(path, studies, stop);
        found.keyPath = keyPath;
        found.key = SiteKey::load(keyPath);
        found.hasFolder = !makesFolder || QDir().mkpath(folder);
        return QVariant::fromValue(found);
    };
    auto *job = new IndexJob(work, this);
    m_job = job;
    connect(job, &IndexJob::finished, this, [this, job, request](const QVariant &result) {
        job->deleteLater();
        if (job != m_job) {
            return;
        }
        m_job.clear();
        const auto found = result.value<Found>();
        DeidentifyRequest made = request;
        made.files = found.files;
        made.siteKey = found.key.key;
        emit finished(made, faultOf(found, request.folder));
    });
    job->start();
}

void AnonymizePreparation::stop()
{
    if (m_job) {
        m_job->stop();
        m_job.clear();
    }
}
