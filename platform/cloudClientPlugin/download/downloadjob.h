#pragma once

#include "downloadtally.h"
#include "fetchrate.h"
#include "seriesjob.h"

#include <QVector>

/// The download of one study: a plain value of the coordinator's.
struct DownloadJob
{
    QString studyUid;
    QString label;
    QString service; ///< the address that it comes from, as CloudSession::plainAddress() makes it
    bool isStopped = false;
    QVector<SeriesJob> series;
    FetchRate rate;
    qint64 bytes = 0;

    SeriesJob *find(const QString &seriesUid);
    /// Whether it does something, or would when its time comes.
    bool isBusy(bool hasSession) const;
    bool hasFailed() const;
    /// These series are to be fetched, and what failed or was stopped is tried again.
    void askFor(const QVector<DownloadSeries> &wanted);
    /// Failed series are tried again, and so is what waits.
    void tryAgain();
    /// @param hasSession of its service. @param nowMs of the coordinator's clock
    DownloadTally tally(bool hasSession, qint64 nowMs) const;

private:
    DownloadState state(bool hasSession, qint64 nowMs) const;
    qint64 dueMs() const;
};
