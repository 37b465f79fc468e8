#include "archiveinquiry.h"

#include "archive.h"

#include <algorithm>
#include <iterator>

namespace {

/// Those that are new and are what was asked for; the others name nothing or are known.
QVector<QueryRecord> taken(const QVector<QueryRecord> &records, quint32 uidTag, QSet<QString> &known,
    int &unreadable, const ArchiveQuestion &question = {})
{
    QVector<QueryRecord> result;
    for (const QueryRecord &record : records) {
        const QString uid = record.value(uidTag);
        unreadable += uid.isEmpty() ? 1 : 0;
        if (!uid.isEmpty() && !known.contains(uid) && question.matches(record)) {
            known.insert(uid);
            result.append(record);
        }
    }
    return result;
}

/// What an answer below a patient need not repeat.
QueryRecord withPatient(const QueryRecord &study, const QueryRecord &patient)
{
    QueryRecord record = study;
    for (const quint32 tag : {QueryTag::patientId, QueryTag::issuerOfPatientId, QueryTag::patientName,
             QueryTag::birthDate, QueryTag::sex}) {
        if (record.value(tag).isEmpty()) {
            record.insert(tag, patient.value(tag));
        }
    }
    return record;
}

} // namespace

ArchiveInquiry::ArchiveInquiry(QueryScu &scu, const ArchiveQuestion &question, Listener listener)
    : m_scu(scu)
    , m_question(question)
    , m_listener(std::move(listener))
{ }

void ArchiveInquiry::take(const QueryResult &result)
{
    m_answer.failure = result.failure;
    m_answer.status = result.status;
    m_answer.isCutOff = m_answer.isCutOff || result.isCutOff;
}

ArchiveAnswer ArchiveInquiry::run()
{
    m_answer.failure = m_scu.open();
    m_hasStudyRoot = m_scu.hasStudyRoot(); // known as long as the line is open, which a failure ends
    // Studies are asked for by what is known of them, as no archive has keys for that with its patients.
    m_isForPatients = !m_question.isAboutStudies() || !m_hasStudyRoot;
    bool isEnough = false;
    for (int number = 0; number < m_question.attempts() && m_answer.isGood() && !isEnough; ++number) {
        isEnough = m_question.isEnough(number, ask(number));
    }
    m_answer.withoutId = m_withoutId.size();
    return m_answer;
}

/// @return what tells whether the next attempt is worth it
QVector<QueryRecord> ArchiveInquiry::ask(int number)
{
    const auto patients = m_isForPatients ? askForPatients(number) : QVector<QueryRecord>();
    const auto studies = !m_answer.isGood() ? QVector<QueryRecord>()
        : m_hasStudyRoot                    ? askForStudies(number)
                                            : askBelow(patients, number);
    return patients.isEmpty() || m_question.isAboutStudies() ? studies : patients;
}

/// In the patient root model. An archive that has none, refuses or fails there is asked for studies alone,
/// whose answers say whose they are; unless these are known only below patients.
QVector<QueryRecord> ArchiveInquiry::askForPatients(int number)
{
    const QueryResult result = m_scu.find(m_question.patientAttempt(number, ArchiveLimit::patients));
    if (!result.isGood() && m_hasStudyRoot && result.failure.problem != NetworkProblem::Stopped) {
        m_isForPatients = false; // it would cost the same time again
        return {};
    }
    take(result);
    QVector<QueryRecord> patients;
    std::copy_if(result.records.begin(), result.records.end(), std::back_inserter(patients),
        [this](const QueryRecord &patient) { return m_question.matchesPatient(patient); });
    if (!m_question.isAboutStudies()) {
        m_listener.foundPatients(patients);
    }
    return patients;
}

/// Of all patients at once.
QVector<QueryRecord> ArchiveInquiry::askForStudies(int number)
{
    const QueryResult result = m_scu.find(m_question.attempt(number, ArchiveLimit::studies));
    take(result);
    tellStudies(result.records);
    return result.records;
}

/// Of one patient after the other, in an archive that has only the patient root model.
QVector<QueryRecord> ArchiveInquiry::askBelow(const QVector<QueryRecord> &patients, int number)
{
    QVector<QueryRecord> all;
    for (const QueryRecord &patient : patients) {
        if (patient.value(QueryTag::patientId).isEmpty()) { // which would name everybody
            m_withoutId.insert(
                patient.value(QueryTag::patientName) + QChar(0x1f) + patient.value(QueryTag::birthDate));
            continue;
        }
        const QueryResult result =
            m_scu.find(m_question.attemptBelow(patient, number, ArchiveLimit::studies));
        take(result);
        QVector<QueryRecord> studies;
        for (const QueryRecord &study : result.records) {
            studies.append(withPatient(study, patient));
        }
        tellStudies(studies);
        all += studies;
        m_answer.isCutOff = m_answer.isCutOff || all.size() >= ArchiveLimit::studies;
        if (!result.isGood() || all.size() >= ArchiveLimit::studies) {
            break;
        }
    }
    return all;
}

void ArchiveInquiry::tellStudies(const QVector<QueryRecord> &studies)
{
    m_listener.foundStudies(taken(studies, QueryTag::studyUid, m_known, m_answer.unreadable, m_question));
}

ArchiveAnswer askForSeries(
    QueryScu &scu, const QString &patientId, const QString &studyUid, QVector<QueryRecord> &series)
{
    const QueryResult result = scu.find(seriesOf(patientId, studyUid, ArchiveLimit::series));
    ArchiveAnswer answer;
    answer.failure = result.failure;
    answer.status = result.status;
    answer.isCutOff = result.isCutOff;
    QSet<QString> known;
    series = taken(result.records, QueryTag::seriesUid, known, answer.unreadable);
    return answer;
}
