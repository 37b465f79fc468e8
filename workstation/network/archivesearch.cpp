#include "archivesearch.h"

#include "createconnection.h"

#include <QRunnable>

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
    const ArchiveInquiry::Listener listener{[&](const QVector<QueryRecord> &patients) {
                                                tell(
                                                    task, [this, patients] { emit foundPatients(patients); });
                                            },
        [&](const QVector<QueryRecord> &studies) { tell(task, [this, studies] { emit found(studies); }); }};
    const ArchiveAnswer answer = ArchiveInquiry(task->scu, question, listener).run();
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
    run(m_pool, [this, task, patientId, studyUid, number = m_number] {
        QVector<QueryRecord> series;
        const ArchiveAnswer answer = askForSeries(task->scu, patientId, studyUid, series);
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
