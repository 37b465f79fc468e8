#pragma once

#include "exportreport.h"

#include <atomic>

/// Counts how far an export is: written by its thread, read by any.
class ExportTally
{
public:
    void begin(ExportProgress::Phase phase, qint64 allFiles, qint64 allBytes)
    {
        m_phase = phase;
        m_files = 0;
        m_bytes = 0;
        m_allFiles = allFiles;
        m_allBytes = allBytes;
    }

    void count(const ExportItem &item)
    {
        ++m_files;
        m_bytes += item.size;
    }

    ExportProgress progress() const { return {m_phase, m_files, m_allFiles, m_bytes, m_allBytes}; }

private:
    std::atomic<ExportProgress::Phase> m_phase{ExportProgress::Phase::Listing};
    std::atomic<qint64> m_files{0};
    std::atomic<qint64> m_bytes{0};
    std::atomic<qint64> m_allFiles{0};
    std::atomic<qint64> m_allBytes{0};
};
