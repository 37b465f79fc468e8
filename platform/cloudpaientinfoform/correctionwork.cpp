#include "correctionwork.h"

#include "indexconnection.h"
#include "runningcorrection.h"
#include "servicecalls.h"
#include "studycorrection.h"
#include "studysearch.h"

namespace {

constexpr char includeField[] = "includefield";

void askIndex(StudyFacts &facts, const QString &databasePath, qlonglong studyPk, const QString &studyUid)
{
    using Problem = IndexCorrectionResult::Problem;
    const IndexConnection connection(databasePath);
    QSqlError error(connection.failure().detail);
    if (connection.isOpen()) {
        facts.index = indexedPatientOf(connection.database(), studyPk, studyUid, &error);
    }
    if (!facts.index.isFound) {
        const bool isKnown = connection.isOpen() && !error.isValid();
        facts.found.problem = isKnown ? Problem::NotFound : Problem::Database;
        facts.found.error = error;
    }
}

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

CorrectionWork::~CorrectionWork() = default;

/// From the thread, to be said on the GUI's.
void CorrectionWork::tell(const News &news)
{
    QMetaObject::invokeMethod(this, news, Qt::QueuedConnection);
}

/// Nothing is said once another has begun.
void CorrectionWork::tell(int number, const News &news)
{
    tell([this, number, news] {
        if (number == m_number) {
            news();
        }
    });
}

void CorrectionWork::read(
    const QString &databasePath, qlonglong studyPk, const QString &studyUid, const WebService &service)
{
    m_thread.begin([=, number = ++m_number](const std::atomic<bool> &stop) {
        const auto earlier =
            StudyCorrection(service, stop, [](const CorrectionProgress &) {}).finishBegun(databasePath);
        if (!earlier.isEmpty()) {
            tell([this, earlier] { emit finishedEarlier(earlier); });
        }
        StudyFacts facts;
        askIndex(facts, databasePath, studyPk, studyUid);
        if (!service.address.isEmpty()) {
            askService(facts, studyUid, service, stop);
        }
        tell(number, [this, facts] { emit known(facts); });
    });
}

void CorrectionWork::correct(const CorrectionRequest &request, const WebService &service)
{
    m_running = std::make_unique<RunningCorrection>([this] { stop(); });
    m_thread.begin([=, number = ++m_number](const std::atomic<bool> &stop) {
        const auto show = [&](const CorrectionProgress &now) {
            tell(number, [this, now] { emit progress(now); });
        };
        const CorrectionReport report = StudyCorrection(service, stop, show).run(request);
        tell(number, [this, report] {
            m_running.reset();
            emit finished(report);
        });
    });
}
