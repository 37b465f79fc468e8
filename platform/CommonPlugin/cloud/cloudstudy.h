#pragma once

#include "dicomjson.h"
#include "downloadtally.h"
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

    QString uid;
    QString name;
    QString id;
    QString date;
    QString modalities;
    QString description;
    int images = -1;
    int held = 0;
    bool isChecked = false; ///< all of it
    Listing listing = Listing::Unasked; ///< of its series
    WebFailure failure; ///< of their listing
    QVector<CloudSeries> series;

    /// What a search's answer tells; its texts as people read them.
    static CloudStudy of(const DicomJson &answer);
    Qt::CheckState check() const;
    /// The download of those of its series that are checked.
    DownloadStudy wanted() const;
};
