#pragma once

#include "archivequestion.h"

#include <QSet>

#include <functional>

/// How a search ended.
struct ArchiveAnswer
{
    NetworkFailure failure;
    quint16 status = 0; ///< the archive's own word where it refused
    bool isCutOff = false; ///< there may be more
    int unreadable = 0; ///< answers that name no study or series
    int withoutId = 0; ///< patients whose studies this archive cannot be asked for

    bool isGood() const { return failure.isNone() && status == 0; }
};

/**
 * One question, put to an archive in the ways that it can be asked: for patients and for studies, or where it
 * knows studies only below patients, for those of one patient after the other. Blocks the thread that it is
 * used on.
 */
class ArchiveInquiry
{
public:
    /// Called on the thread of run().
    struct Listener
    {
        std::function<void(const QVector<QueryRecord> &)> foundPatients; ///< some may come again
        std::function<void(const QVector<QueryRecord> &)> foundStudies; ///< each once
    };

    /// @param scu outlives it, as the question does
    ArchiveInquiry(QueryScu &scu, const ArchiveQuestion &question, Listener listener);

    ArchiveAnswer run();

private:
    QVector<QueryRecord> ask(int number);
    QVector<QueryRecord> askForPatients(int number);
    QVector<QueryRecord> askForStudies(int number);
    QVector<QueryRecord> askBelow(const QVector<QueryRecord> &patients, int number);
    void take(const QueryResult &result);
    void tellStudies(const QVector<QueryRecord> &studies);

    QueryScu &m_scu;
    const ArchiveQuestion &m_question;
    const Listener m_listener;
    ArchiveAnswer m_answer;
    bool m_hasStudyRoot = false;
    bool m_isForPatients = true; ///< whether they are asked for, too
    QSet<QString> m_known; ///< studies that were told already
    QSet<QString> m_withoutId; ///< patients, by what else is known of them
};

/// The series of a study. Blocks. @param series takes those that the archive names, each once
ArchiveAnswer askForSeries(
    QueryScu &scu, const QString &patientId, const QString &studyUid, QVector<QueryRecord> &series);
