#pragma once

#include "attributes.h"

#include <QStringList>
#include <QVector>

/// What the send dialog shows of some records: whose images, and their files.
struct SendSelection
{
    QStringList names; ///< of the patients, each once
    QStringList modalities; ///< one for each name: of the first image that came with it
    QVector<QStringList> files; ///< a group for each patient; of studies or series all in one group

    /// Reads it from the default connection, in the order of the keys. Images have no such selection: it is
    /// empty, and so it is where nothing is selected.
    static SendSelection read(RecordLevel level, const QList<qlonglong> &keys);
};
