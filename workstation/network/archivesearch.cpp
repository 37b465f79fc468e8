#include "archivesearch.h"

#include "createconnection.h"

#include <QRunnable>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

constexpr int threads = 4;

template <typename Function>
class FunctionRun : public QRunnable
{
public:
    explicit FunctionRun(Function function)
        : m_function(std::move(function))
    { }
    void run() override { m_function(); }

private:
    Function m_function;
};

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

/// One of the attempts at a question, and what the search has come to by it.
struct ArchiveSearch::Attempt
{
    const ArchiveQuestion &question;
    const int number;
    ArchiveAnswer &answer;
    QSet<QString> &known; ///< studies that were told already

    void take(const QueryResult &result) const
    {
        answer.failure = result.failure;
        answer.status = result.status;
        answer.isCutOff = answer.isCutOff || result.isCutOff;
    }
};

/// One association and what is asked over it.
struct ArchiveSearch::Task
{
    explicit Task(const Archive &archive)
        : scu(archive.node, Archive::ownOptions())
    { }
    QueryScu scu;
};

ArchiveSearch::ArchiveSearch(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(threads);
    m_pool.setStackSize(ScuAssociation::stackBytes);
    m_local.setMaxThreadCount(1);
}

ArchiveSearch::~ArchiveSearch()
{
    abortAll();
    m_pool.waitForDone();
    m_local.waitForDone();
}

void ArchiveSearch::abortAll()
{
    for (const auto &weak : qAsConst(m_tasks)) {
        if (const auto task = weak.lock()) {
            task->scu.abort();
        }
    }
}

template <typename Function>
void ArchiveSearch::run(QThreadPool &pool, Function function)
{
    pool.start(new FunctionRun<Function>(std::move(function)));
}

void ArchiveSearch::begin(const std::shared_ptr<Task> &task)
{
    m_tasks.erase(std::remove_if(m_tasks.begin(), m_tasks.end(),
                      [](const std::weak_ptr<Task> &old) { return old.expired(); }),
        m_tasks.end());
    m_tasks.append(task);
}

void ArchiveSearch::search(const Archive &archive, const ArchiveQuestion &question)
{
    abortAll(); // listings of the archive before, too
    ++m_number;
    m_archive = archive;
    m_studies = std::make_shared<Task>(archive);
    begin(m_studies);
    run(m_pool, [this, task = m_studies, question] { ask(task, question); });
}

/// On a thread of the pool.
void ArchiveSearch::ask(const std::shared_ptr<Task> &task, const ArchiveQuestion &question)
{
    ArchiveAnswer answer;
    answer.failure = task->scu.open();
    QSet<QString> known;
    bool isEnough = false;
    for (int number = 0; number < question.attempts() && answer.isGood() && !isEnough; ++number) {
        const Attempt attempt{question, number, answer, known};
        const bool hasStudyRoot = task->scu.hasStudyRoot();
        // Studies are asked for by what is known of them, as no archive has keys for that with its patients.
        const bool isForPatients = !question.isAboutStudies() || !hasStudyRoot;
        const auto patients = isForPatients ? askForPatients(task, attempt) : QVector<QueryRecord>();
        const auto studies = !answer.isGood() ? QVector<QueryRecord>()
            : hasStudyRoot                    ? askForStudies(task, attempt)
                                              : askBelow(task, attempt, patients);
        isEnough =
            question.isEnough(number, patients.isEmpty() || question.isAboutStudies() ? studies : patients);
    }
    tell(task, [this, answer] {
        m_studies.reset();
        emit ended(answer);
    });
}

/// In the patient root model. An archive that has none, or refuses, is asked for studies alone, whose answers
/// say whose they are.
QVector<QueryRecord> ArchiveSearch::askForPatients(const std::shared_ptr<Task> &task, const Attempt &attempt)
{
    const QueryResult result = task->scu.find(attempt.question.patientAttempt(attempt.number, mostPatients));
    if (result.failure.problem == NetworkProblem::NoContext || result.status != 0) {
        return {};
    }
    attempt.take(result);
    QVector<QueryRecord> patients;
    std::copy_if(result.records.begin(), result.records.end(), std::back_inserter(patients),
        [&attempt](const QueryRecord &patient) { return attempt.question.matchesPatient(patient); });
    if (!attempt.question.isAboutStudies()) {
        tell(task, [this, patients] { emit foundPatients(patients); });
    }
    return patients;
}

/// Of all patients at once.
QVector<QueryRecord> ArchiveSearch::askForStudies(const std::shared_ptr<Task> &task, const Attempt &attempt)
{
    const QueryResult result = task->scu.find(attempt.question.attempt(attempt.number, mostStudies));
    attempt.take(result);
    tellStudies(task, attempt, result.records);
    return result.records;
}

/// Of one patient after the other, in an archive that has only the patient root model.
QVector<QueryRecord> ArchiveSearch::askBelow(
    const std::shared_ptr<Task> &task, const Attempt &attempt, const QVector<QueryRecord> &patients)
{
    QVector<QueryRecord> all;
    for (const QueryRecord &patient : patients) {
        if (patient.value(QueryTag::patientId).isEmpty()) {
            ++attempt.answer.unreadable; // it cannot be named, and no ID at all would name everybody
            continue;
        }
        const QueryResult result =
            task->scu.find(attempt.question.attemptBelow(patient, attempt.number, mostStudies));
        attempt.take(result);
        QVector<QueryRecord> studies;
        for (const QueryRecord &study : result.records) {
            studies.append(withPatient(study, patient));
        }
        tellStudies(task, attempt, studies);
        all += studies;
        attempt.answer.isCutOff = attempt.answer.isCutOff || all.size() >= mostStudies;
        if (!result.isGood() || all.size() >= mostStudies) {
            break;
        }
    }
    return all;
}

void ArchiveSearch::tellStudies(
    const std::shared_ptr<Task> &task, const Attempt &attempt, const QVector<QueryRecord> &studies)
{
    const auto told =
        taken(studies, QueryTag::studyUid, attempt.known, attempt.answer.unreadable, attempt.question);
    tell(task, [this, told] { emit found(told); });
}

/// To the GUI thread, unless another search has begun.
void ArchiveSearch::tell(const std::shared_ptr<Task> &task, const std::function<void()> &function)
{
    QMetaObject::invokeMethod(
        this,
        [this, task, function] {
            if (m_studies == task) {
                function();
            }
        },
        Qt::QueuedConnection);
}

void ArchiveSearch::listSeries(const QString &patientId, const QString &studyUid)
{
    const auto task = std::make_shared<Task>(m_archive);
    begin(task);
    run(m_pool, [this, task, patientId, studyUid, number = m_number] {
        const QueryResult result = task->scu.find(seriesOf(patientId, studyUid, mostSeries));
        ArchiveAnswer answer{result.failure, result.status, result.isCutOff, 0};
        QSet<QString> known;
        const auto series = taken(result.records, QueryTag::seriesUid, known, answer.unreadable);
        QMetaObject::invokeMethod(
            this,
            [this, studyUid, series, answer, number] {
                if (number == m_number) {
                    emit seriesFound(studyUid, series, answer);
                }
            },
            Qt::QueuedConnection);
    });
}

void ArchiveSearch::countHeld(RecordLevel level, const QStringList &uids)
{
    if (!uids.isEmpty() && !databasePath().isEmpty()) {
        m_uncounted.insert(int(level), uids);
        countNext();
    }
}

/// One count at a time: the index changes faster than a large one is counted.
void ArchiveSearch::countNext()
{
    if (m_isCounting || m_uncounted.isEmpty()) {
        return;
    }
    m_isCounting = true;
    const auto level = static_cast<RecordLevel>(m_uncounted.firstKey());
    run(m_local, [this, level, uids = m_uncounted.take(int(level)), path = databasePath()] {
        const QHash<QString, int> images = localHoldings(path, level, uids);
        QMetaObject::invokeMethod(
            this,
            [this, level, images] {
                m_isCounting = false;
                emit held(level, images);
                countNext();
            },
            Qt::QueuedConnection);
    });
}

void ArchiveSearch::stop()
{
    if (m_studies) {
        m_studies->scu.cancel();
    }
}
