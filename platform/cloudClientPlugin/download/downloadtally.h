#pragma once

#include "webfailure.h"

#include <QMetaType>
#include <QString>
#include <QVector>

/// A series that is to be fetched.
struct DownloadSeries
{
    QString seriesUid;
    int expected = -1; ///< objects, as the service said; -1 where it did not
};

/// What is to be fetched of a study.
struct DownloadStudy
{
    QString studyUid;
    QString label; ///< what people call it
    QVector<DownloadSeries> series;
};

/// What a download does at the moment.
enum class DownloadState : quint8 {
    Waiting, ///< for its turn, or for another program that downloads into the same index
    Running,
    Indexing, ///< all is here, and goes into the index
    Retrying, ///< after a failure that may pass
    NeedsSession, ///< nobody is signed in, or the service does not accept the session any more
    Stopped, ///< by the user
    Failed, ///< some of its series; the others are in the index
    Finished
};

/// How far the download of a study is; a copy.
struct DownloadTally
{
    QString studyUid;
    QString label;
    DownloadState state = DownloadState::Waiting;
    int series = 0;
    int seriesDone = 0;
    qint64 expected = -1; ///< objects; -1 where the service did not say for every series
    qint64 indexed = 0; ///< objects that are in the index, in this run or an earlier one
    qint64 fetched = 0; ///< objects that are here, in the index or about to get there
    qint64 refused = 0; ///< objects that the index did not take in this run; they were kept aside
    qint64 bytes = 0; ///< fetched in this run
    double bytesPerSecond = 0;
    double objectsPerSecond = 0;
    qint64 secondsLeft = -1; ///< -1 where that cannot be said
    WebFailure failure; ///< of the series that failed last, where state says Retrying or Failed
    qint64 nextTryMs = 0; ///< when it is tried next while it is Retrying, in ms since the epoch

    bool isEnded() const
    {
        return state == DownloadState::Stopped || state == DownloadState::Failed
            || state == DownloadState::Finished;
    }
};

Q_DECLARE_METATYPE(DownloadTally)
