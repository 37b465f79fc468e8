#pragma once

#include <QtGlobal>

/// Where one file of a corpus belongs; all numbers count from 0.
struct CorpusPosition
{
    int patient = 0;
    int series = 0; ///< over the whole corpus
    int image = 0; ///< within its series
};

/// How many files a corpus has and how they spread: every patient has the same number of series in one study,
/// every series the same number of images, the last ones less where the numbers do not divide.
struct CorpusShape
{
    int files = 20'000;
    int patients = 2'000;
    int series = 4'000;
    int side = 64; ///< pixels of a row and of a column
    quint64 seed = 1;

    bool isValid() const;
    CorpusPosition position(int file) const;
};
