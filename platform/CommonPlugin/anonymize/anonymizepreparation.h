#pragma once

#include "deidentifyreport.h"

#include <QList>
#include <QObject>
#include <QPointer>

class IndexJob;

/**
 * Looks up what a making of anonymous copies needs before it begins: the files of the studies, the site's key
 * and the folder. The looking up is on a thread; GUI thread.
 */
class AnonymizePreparation : public QObject
{
    Q_OBJECT

public:
    explicit AnonymizePreparation(QObject *parent = nullptr);

    /// Stops an earlier one. @param request without files and key
    /// @param makesFolder whether the request's folder may be made where it is missing
    void begin(const DeidentifyRequest &request, const QList<qlonglong> &studies, bool makesFolder);
    /// finished() does not come then.
    void stop();
    bool isRunning() const { return !m_job.isNull(); }

signals:
    /// @param fault why nothing can begin, as a sentence; empty where all is there
    void finished(const DeidentifyRequest &request, const QString &fault);

private:
    QPointer<IndexJob> m_job; ///< the one that somebody waits for; earlier ones end by themselves
};
