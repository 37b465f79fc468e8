#pragma once

#include <QString>

/// A series that objects are fetched of.
struct AskedSeries
{
    QString studyUid;
    QString seriesUid;
};
