#include "correctionwork.h"

#include "indexconnection.h"
#include "objectcorrection.h"
#include "runningcorrection.h"
#include "servicecalls.h"
#include "studycorrection.h"
#include "studysearch.h"

#include <QThread>

namespace {

constexpr char includeField[] = "includefield";

void askService(
    StudyFacts &facts, const QString &studyUid, const WebService &service, const std::atomic<bool> &stop)
{
    StudyQuestion question;
    question.studyUid = studyUid;
    QUrlQuery query = question.query();
    query.addQueryItem(
        QLatin1String(includeField), DicomTag::name(PatientValues::tag(PatientField::Comments)));
    QVector<DicomJson> found;
    facts.failure = ServiceCalls(service, &stop).search(QStringLiteral("studies"), query, found);
    facts.isInService = facts.failure.isNone() && !found.isEmpty();
    if (facts.isInService) {
        const DicomJson &study = found.constFirst();
        for (const PatientField field : PatientValues::fields) {
            facts.service[field] = study.text(PatientValues::tag(field));
        }
        facts.serviceObjects = int(qMax<qint64>(0, study.number(DicomTag::imagesInStudy)));
    }
}

} // namespace

CorrectionWork::CorrectionWork(QObject *parent)
    : QObject(parent)
{ }

CorrectionWork::~CorrectionWork()
{
    m_stop = true;
    if (m_thread) {
        m_thread->wait();
    }
}

void CorrectionWork::begin(const std::function<void(const Tell &)> &work)
{
    if (m_thread) {
        m_stop = true; // a reading; a correction has said that it is at its end
        m_thread->wait();
    }
    m_stop = false;
    const Tell tell = [this, number = ++m_number](const std::function<void()> &news) {
        QMetaObject::invokeMethod(
            this,
            [this, number, news] {
                if (number == m_number) {
                    news();
                }
            },
            Qt::QueuedConnection);
    };
    m_thread.reset(QThread::create([work, tell] { work(tell); }));
    m_thread->setStackSize(correctionStack);
    m_thread->start();
}

void CorrectionWork::read(
    const QString &databasePath, qlonglong studyPk, const QString &studyUid, const WebService &service)
{
    begin([=](const Tell &tell) {
        const bool hasService = !service.address.isEmpty();
        if (hasService) {
            const auto earlier =
                StudyCorrection(service, m_stop, [](const CorrectionProgress &) {}).finishBegun(databasePath);
            if (!earlier.isEmpty()) {
                tell([this, earlier] { emit finishedEarlier(earlier); });
            }
        }
        StudyFacts facts;
        const IndexConnection connection(databasePath);
        if (connection.isOpen()) {
            facts.index = indexedPatientOf(connection.database(), studyPk, studyUid);
        }
        if (hasService) {
            askService(facts, studyUid, service, m_stop);
        }
        tell([this, facts] { emit known(facts); });
    });
}

void CorrectionWork::correct(const CorrectionRequest &request, const WebService &service)
{
    m_running = std::make_unique<RunningCorrection>([this] { stop(); });
    begin([=](const Tell &tell) {
        const auto show = [&](const CorrectionProgress &now) { tell([this, now] { emit progress(now); }); };
        const CorrectionReport report = StudyCorrection(service, m_stop, show).run(request);
        tell([this, report] {
            m_running.reset();
            emit finished(report);
        });
    });
}
