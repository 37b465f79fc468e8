#pragma once

#include <QString>

/// How many records an index for measuring holds. Children spread evenly over their parents; the first series
/// of the first patient by name holds imagesOfFirstSeries.
struct BigIndexSize
{
    int patients = 0;
    int studiesOfPatient = 0;
    int seriesOfStudy = 0;
    int seriesMoreOfFirstStudy = 0; ///< of the first study of each patient, besides seriesOfStudy
    int imagesOfSeries = 0;
    int imagesOfFirstSeries = 0;
};

/// Fills the empty index of the default connection by plain statements. @return the database's words where
/// that failed
QString fillBigIndex(const BigIndexSize &size);
