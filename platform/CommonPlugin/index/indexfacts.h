#pragma once

#include "attributes.h"

#include <QMap>
#include <QMetaType>
#include <QString>

#include <atomic>

/// What an index holds: a value.
struct IndexFacts
{
    QMap<RecordLevel, qint64> records;
    /// By level and upload state as it is stored; images have no state.
    QMap<RecordLevel, QMap<QString, qint64>> byState;
    bool isRead = false; ///< false where the index could not be read, or not to its end

    /// Reads a whole index: for a worker thread. @param stop ends it soon, from another thread
    static IndexFacts of(const QString &databasePath, const std::atomic<bool> &stop);
};

Q_DECLARE_METATYPE(IndexFacts)
