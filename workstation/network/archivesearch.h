#pragma once

#include "archive.h"
#include "archiveinquiry.h"
#include "localholdings.h"

#include <QMap>
#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>

/**
 * Searches an archive on threads of its own. What has been asked last counts: another search ends the one
 * before and its listings, of which nothing more is told. GUI thread; the destructor ends what runs and waits
 * for it, for milliseconds.
 */
class ArchiveSearch : public QObject
{
    Q_OBJECT

public:
    explicit ArchiveSearch(QObject *parent = nullptr);
    ~ArchiveSearch() override;

    void search(const Archive &archive, const ArchiveQuestion &question);
    /// Of a study that the last search found.
    void listSeries(const QString &patientId, const QString &studyUid);
    /// Looks up what the index has; found studies and series are looked up without being asked for.
    void countHeld(RecordLevel level, const QStringList &uids);
    bool isRunning() const { return m_studies != nullptr; }

public slots:
    /// Ends the search that runs; what was found so far stays.
    void stop();

signals:
    /// Patients as the archive has them, before their studies; not from archives without such a level, nor
    /// for questions about studies. Some may come again.
    void foundPatients(const QVector<QueryRecord> &patients);
    /// More studies, each once.
    void found(const QVector<QueryRecord> &studies);
    void ended(const ArchiveAnswer &answer);
    void seriesFound(
        const QString &studyUid, const QVector<QueryRecord> &series, const ArchiveAnswer &answer);
    void held(RecordLevel level, const QHash<QString, int> &images);

private:
    struct Task;

    template <typename Function>
    static void run(QThreadPool &pool, Function function);
    void begin(const std::shared_ptr<Task> &task);
    void abortAll();
    void countNext();
    void ask(const std::shared_ptr<Task> &task, const ArchiveQuestion &question);
    void tell(const std::shared_ptr<Task> &task, const std::function<void()> &function);

    QThreadPool m_pool;
    QThreadPool m_local; ///< for the index: archives that do not answer hold it up no longer
    Archive m_archive;
    int m_number = 0; ///< of the last search
    QMap<int, QStringList> m_uncounted; ///< by level; the latest wish only
    bool m_isCounting = false;
    std::shared_ptr<Task> m_studies; ///< the search that runs
    QVector<std::weak_ptr<Task>> m_tasks;
};
