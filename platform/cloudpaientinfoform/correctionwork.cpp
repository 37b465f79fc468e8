#include "correctionwork.h"

#include "indexconnection.h"
#include "objectcorrection.h"
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
{
    qRegisterMetaType<StudyFacts>();
    qRegisterMetaType<CorrectionProgress>();
    qRegisterMetaType<CorrectionReport>();
    qRegisterMetaType<QVector<CorrectionReport>>();
}

CorrectionWork::~CorrectionWork()
{
    m_stop = true;
    if (m_thread) {
        m_thread->wait();
    }
}

bool CorrectionWork::isRunning() const
{
    return m_thread && m_thread->isRunning();
}

template <typename Work>
void CorrectionWork::begin(const Work &work)
{
    if (m_thread) {
        m_thread->wait(); // it has said all, or is about to
    }
    m_stop = false;
    m_thread.reset(QThread::create(work));
    m_thread->setStackSize(correctionStack);
    m_thread->start();
}

void CorrectionWork::read(
    const QString &databasePath, qlonglong studyPk, const QString &studyUid, const WebService &service)
{
    begin([this, databasePath, studyPk, studyUid, service] {
        const bool hasService = !service.address.isEmpty();
        if (hasService) {
            const auto earlier =
                StudyCorrection(service, m_stop, [](const CorrectionProgress &) {}).finishBegun(databasePath);
            if (!earlier.isEmpty()) {
                emit finishedEarlier(earlier);
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
        emit known(facts);
    });
}

void CorrectionWork::correct(const CorrectionRequest &request, const WebService &service)
{
    begin([this, request, service] {
        const auto show = [this](const CorrectionProgress &now) { emit progress(now); };
        emit finished(StudyCorrection(service, m_stop, show).run(request));
    });
}
