#include "objectplaces.h"

#include "archive.h"

#include <QSet>

namespace {

QueryRecord below(const RetrieveRequest &request)
{
    return {{QueryTag::patientId, request.patientId}, {QueryTag::studyUid, request.studyUid}};
}

void append(QVector<RetrieveRequest> &requests, const RetrieveRequest &request, const QString &series,
    const QStringList &uids)
{
    for (int first = 0; first < uids.size(); first += RetrieveRequest::mostInstances) {
        RetrieveRequest part = request;
        part.level = RecordLevel::Image;
        part.seriesUid = series;
        part.instanceUids = uids.mid(first, RetrieveRequest::mostInstances);
        requests.append(part);
    }
}

QStringList seriesOfStudy(const RetrieveRequest &request, QueryScu &archive)
{
    QueryRecord keys = below(request);
    keys.insert(QueryTag::seriesUid, {});
    QStringList uids;
    for (const QueryRecord &series :
        archive.find({RecordLevel::Series, keys, ArchiveLimit::series}).records) {
        uids.append(series.value(QueryTag::seriesUid));
    }
    uids.removeAll(QString());
    return uids;
}

/// Those of the wanted objects that a series has; they are wanted no longer.
QStringList takeFrom(
    const QString &series, QSet<QString> &wanted, const RetrieveRequest &request, QueryScu &archive)
{
    QueryRecord keys = below(request);
    keys.insert(QueryTag::seriesUid, series);
    keys.insert(QueryTag::instanceUid, {});
    QStringList found;
    for (const QueryRecord &image : archive.find({RecordLevel::Image, keys, ArchiveLimit::images}).records) {
        const QString uid = image.value(QueryTag::instanceUid);
        if (wanted.remove(uid)) {
            found.append(uid);
        }
    }
    return found;
}

} // namespace

QVector<RetrieveRequest> requestsFor(
    const QStringList &uids, const RetrieveRequest &request, QueryScu &archive)
{
    QVector<RetrieveRequest> requests;
    if (request.level != RecordLevel::Study) {
        append(requests, request, request.seriesUid, uids);
        return requests;
    }
    QSet<QString> wanted(uids.begin(), uids.end());
    const QStringList all = seriesOfStudy(request, archive);
    for (auto series = all.begin(); series != all.end() && !wanted.isEmpty(); ++series) {
        append(requests, request, *series, takeFrom(*series, wanted, request, archive));
    }
    return wanted.isEmpty() ? requests : QVector<RetrieveRequest>();
}
