#pragma once

#include "commonplugin_export.h"

#include <QPair>
#include <QQueue>
#include <QtGlobal>

/// How fast an import or a send goes, from what it did over the last seconds.
class COMMONPLUGIN_EXPORT ImportRate
{
public:
    void clear() { m_samples.clear(); }
    /// @param done files with their verdict after that many milliseconds; both never go back
    void add(qint64 elapsedMs, qint64 done);
    double filesPerSecond() const;
    /// What the rest takes at this rate; -1 where that cannot be said.
    qint64 millisecondsFor(qint64 files) const;

private:
    QQueue<QPair<qint64, qint64>> m_samples;
};
