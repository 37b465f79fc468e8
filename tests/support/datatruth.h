#pragma once

#include "attributes.h"

#include <QMap>
#include <QString>
#include <QVector>

/// A line of the truth beside the shared corpus: what independent readers found in a file.
struct DataTruth
{
    QString path; ///< below the corpus
    QString verdict;
    QMap<Attribute, QString> values; ///< identifiers, name, modality, number
};

/// All lines; none where the corpus is not there.
QVector<DataTruth> readDataTruth();
