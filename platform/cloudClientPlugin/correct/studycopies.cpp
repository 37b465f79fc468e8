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
    for (const QJsonValue &one : found.array()) {
        if (!failure.isNone() || one[QLatin1String("Type")] != QLatin1String("Study")) {
            continue;
        }
        StudyCopy copy;
        copy.id = one[QLatin1String("ID")].toString();
        QJsonDocument study;
        QJsonDocument counts;
        failure = m_calls.ask(studyResource(copy.id), study);
        if (failure.isNone()) {
            failure = m_calls.ask(studyResource(copy.id) + QStringLiteral("/statistics"), counts);
        }
        copy.patientId = study[QLatin1String("PatientMainDicomTags")][QLatin1String("PatientID")].toString();
        copy.objects = counts[QLatin1String("CountInstances")].toVariant().toInt();
        copies.append(copy);
    }
    return failure;
}

WebFailure StudyCopies::remove(const StudyCopy &copy)
{
    return m_calls.remove(studyResource(copy.id));
}

WebFailure StudyCopies::keepOnly(
    const QString &studyUid, int objects, const std::function<bool(const StudyCopy &)> &isToStay)
{
    QVector<StudyCopy> copies;
    WebFailure failure = ServiceCalls::repeated([&] {
        copies.clear();
        return find(studyUid, copies);
    });
    const auto stays = std::find_if(copies.cbegin(), copies.cend(), isToStay);
    if (failure.isNone() && objects > 0 && (stays == copies.cend() || stays->objects < objects)) {
        failure = {WebProblem::BadAnswer, {}, 0};
    }
    for (const StudyCopy &copy : qAsConst(copies)) {
        if (failure.isNone() && !isToStay(copy)) {
            failure = ServiceCalls::repeated([&] { return remove(copy); });
        }
    }
    return failure;
}
