#pragma once

#include <QMetaType>

/// How many records the index holds; -1 before anybody has counted.
struct IndexCounts
{
    qint64 patients = -1;
    qint64 studies = -1;
    qint64 series = -1;
    qint64 images = -1;
};

Q_DECLARE_METATYPE(IndexCounts)
