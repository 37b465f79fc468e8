#pragma once

#include "downloadtally.h"
#include "foundstudy.h"
#include "webfailure.h"

#include <QVector>

/// A series that a service has.
struct CloudSeries
{
    QString uid;
    QString modality;
    QString title;
    int images = -1; ///< as the service says; -1 where it does not
    int held = 0; ///< images in the index
    bool isChecked = false;
};

/// A study that a service has, with what is checked of it.
struct CloudStudy
{
    enum class Listing : quint8 { Unasked, Asked, Listed, Failed };

    FoundStudy found;
    int held = 0; ///< images in the index
    bool isChecked = false; ///< all of it
    Listing listing = Listing::Unasked; ///< of its series
    WebFailure failure; ///< of their listing
    QVector<CloudSeries> series;

    Qt::CheckState check() const;
    /// Checks one of its series, or all where that is negative.
    void setChecked(int at, bool isOn);
    /// Those of a list that it has not yet, checked as it is.
    QVector<CloudSeries> fresh(const QVector<CloudSeries> &listed) const;
    /// The download of those of its series that are checked.
    DownloadStudy wanted() const;
};
