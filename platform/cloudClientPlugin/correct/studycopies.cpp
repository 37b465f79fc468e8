#include "studycopies.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

/// What lies beside the DICOMweb service.
WebService above(WebService service)
{
    QString path = service.address.path();
    while (path.endsWith(QLatin1Char('/'))) {
        path.chop(1);
    }
    service.address.setPath(path.left(path.lastIndexOf(QLatin1Char('/'))));
    return service;
}

QString studyResource(const QString &id)
{
    return QStringLiteral("studies/") + id;
}

} // namespace

StudyCopies::StudyCopies(const WebService &service, const std::atomic<bool> *stop)
    : m_calls(above(service), stop)
{ }

bool StudyCopies::isOffered(WebFailure &failure)
{
    QJsonDocument answer;
    failure = m_calls.ask(QStringLiteral("system"), answer);
    const bool isAnswered = failure.isNone();
    if (failure.problem != WebProblem::Stopped
        && (!failure.isPassing() || failure.problem == WebProblem::ServerError)) {
        failure = {}; // whoever refuses offers nothing
    }
    return isAnswered && answer.object().contains(QLatin1String("ApiVersion"))
        && answer.object().contains(QLatin1String("DicomAet"));
}

WebFailure StudyCopies::find(const QString &studyUid, QVector<StudyCopy> &copies)
{
    QJsonDocument found;
    WebFailure failure = m_calls.ask(QStringLiteral("tools/lookup"), studyUid.toLatin1(), found);
    const QJsonArray all = found.array();
    for (const auto &one : all) {
        if (!failure.isNone() || one[QLatin1String("Type")] != QLatin1String("Study")) {
            continue;
        }
        StudyCopy copy;
        copy.id = one[QLatin1String("ID")].toString();
        QJsonDocument study;
        failure = m_calls.ask(studyResource(copy.id), study);
        copy.patientId = study[QLatin1String("PatientMainDicomTags")][QLatin1String("PatientID")].toString();
        copies.append(copy);
    }
    return failure;
}

WebFailure StudyCopies::list(const StudyCopy &copy, Instances &instances)
{
    QJsonDocument listed;
    const WebFailure failure = ServiceCalls::repeated(
        [&] { return m_calls.ask(studyResource(copy.id) + QStringLiteral("/instances"), listed); });
    const QJsonArray all = listed.array();
    for (const auto &one : all) {
        instances.insert(one[QLatin1String("MainDicomTags")][QLatin1String("SOPInstanceUID")].toString(),
            one[QLatin1String("ID")].toString());
    }
    return failure.isNone() && instances.isEmpty() ? WebFailure{WebProblem::BadAnswer, {}, 0} : failure;
}

/// Object by object: what comes while this goes on stays, whatever the study.
WebFailure StudyCopies::removeFrom(const StudyCopy &copy, const QSet<QString> &uids, Others others)
{
    Instances there;
    WebFailure failure = list(copy, there);
    const bool hasOthers = std::any_of(
        there.keyBegin(), there.keyEnd(), [&](const QString &uid) { return !uids.contains(uid); });
    if (failure.isNone() && hasOthers && others == Others::Refuse) {
        failure = {WebProblem::Incomplete, {}, 0};
    }
    for (auto one = there.cbegin(); one != there.cend() && failure.isNone(); ++one) {
        if (uids.contains(one.key())) {
            failure = ServiceCalls::repeated(
                [&] { return m_calls.remove(QStringLiteral("instances/") + one.value()); });
            failure = failure.problem == WebProblem::NotFound ? WebFailure() : failure; // gone already
        }
    }
    return failure;
}

WebFailure StudyCopies::keepOnly(const QString &studyUid, const QSet<QString> &uids,
    const std::function<bool(const StudyCopy &)> &isToStay, Others others)
{
    QVector<StudyCopy> copies;
    WebFailure failure = ServiceCalls::repeated([&] {
        copies.clear();
        return find(studyUid, copies);
    });
    Instances kept;
    for (const StudyCopy &copy : qAsConst(copies)) {
        if (failure.isNone() && isToStay(copy)) {
            failure = list(copy, kept);
        }
    }
    if (failure.isNone()
        && !std::all_of(uids.cbegin(), uids.cend(), [&](const QString &uid) { return kept.contains(uid); })) {
        failure = {WebProblem::BadAnswer, {}, 0};
    }
    for (const StudyCopy &copy : qAsConst(copies)) {
        if (failure.isNone() && !isToStay(copy)) {
            failure = removeFrom(copy, uids, others);
        }
    }
    return failure;
}
