#pragma once

#include "importer.h"

#include <QElapsedTimer>
#include <QString>

#include <atomic>
#include <thread>

/**
 * Looks at an import from outside while it runs, as a window would: at its progress, and through a connection
 * of its own at the index. Two threads of its own, from the constructor until stop().
 */
class ImportWatch
{
public:
    ImportWatch(const Importer &importer, const QString &databasePath);
    ~ImportWatch();
    ImportWatch(const ImportWatch &) = delete;
    ImportWatch &operator=(const ImportWatch &) = delete;

    void stop();

    /// Longest time in which neither the files found nor those done changed; after stop().
    double longestSilence() const { return m_longestSilence; }
    /// When another connection saw the first patient, or -1; after stop().
    double firstPatient() const { return m_firstPatient; }

private:
    void watchProgress();
    void watchIndex();
    double now() const { return double(m_time.nsecsElapsed()) / 1e9; }

    const Importer &m_importer;
    const QString m_databasePath;
    QElapsedTimer m_time;
    std::atomic<bool> m_stopped{false};
    double m_longestSilence = 0;
    double m_firstPatient = -1;
    std::thread m_progress;
    std::thread m_index;
};
