#pragma once

#include <QVector>

/// The colours of a palette image: the stored value `first` has the first one; values beyond either end have
/// that end's.
struct Palette
{
    int first = 0;
    QVector<uchar> red; ///< all three of one length
    QVector<uchar> green;
    QVector<uchar> blue;

    bool isEmpty() const { return red.isEmpty(); }
};
