#include "archivesearch.h"

#include "createconnection.h"

#include <QRunnable>
#include <QSet>

#include <algorithm>

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

} // namespace

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
}

ArchiveSearch::~ArchiveSearch()
{
    for (const auto &weak : qAsConst(m_tasks)) {
        if (const auto task = weak.lock()) {
            task->scu.abort();
        }
    }
    m_pool.waitForDone();
}

template <typename Function>
void ArchiveSearch::run(Function function)
{
    m_pool.start(new FunctionRun<Function>(std::move(function)));
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
    if (m_studies) {
        m_studies->scu.abort();
    }
    m_archive = archive;
    m_studies = std::make_shared<Task>(archive);
    begin(m_studies);
    run([this, task = m_studies, question] { ask(task, question); });
}

/// On a thread of the pool.
void ArchiveSearch::ask(const std::shared_ptr<Task> &task, const ArchiveQuestion &question)
{
    ArchiveAnswer answer;
    QSet<QString> known;
    for (int number = 0; number < question.attempts(); ++number) {
        const QueryResult result = task->scu.find(question.attempt(number, mostStudies));
        answer.failure = result.failure;
        answer.status = result.status;
        answer.isCutOff = answer.isCutOff || result.isCutOff;
        const auto studies = taken(result.records, QueryTag::studyUid, known, answer.unreadable, question);
        tell(task, [this, studies] { emit found(studies); });
        if (!result.isGood() || question.isEnough(number, result.records)) {
            break;
        }
    }
    tell(task, [this, answer] {
        m_studies.reset();
        emit ended(answer);
    });
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
    run([this, task, patientId, studyUid] {
        const QueryResult result = task->scu.find(seriesOf(patientId, studyUid, mostSeries));
        ArchiveAnswer answer{result.failure, result.status, result.isCutOff, 0};
        QSet<QString> known;
        const auto series = taken(result.records, QueryTag::seriesUid, known, answer.unreadable);
        QMetaObject::invokeMethod(
            this, [this, studyUid, series, answer] { emit seriesFound(studyUid, series, answer); },
            Qt::QueuedConnection);
    });
}

void ArchiveSearch::countHeld(RecordLevel level, const QStringList &uids)
{
    if (uids.isEmpty() || databasePath().isEmpty()) {
        return;
    }
    run([this, level, uids, path = databasePath()] {
        const QHash<QString, int> images = localHoldings(path, level, uids);
        QMetaObject::invokeMethod(
            this, [this, level, images] { emit held(level, images); }, Qt::QueuedConnection);
    });
}

void ArchiveSearch::stop()
{
    if (m_studies) {
        m_studies->scu.cancel();
    }
}
