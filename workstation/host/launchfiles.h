#pragma once

#include "recordfiles.h"

#include <QObject>

#include <atomic>
#include <thread>

struct RecordSelection;

/// Reads the files of a selection, of which there may be very many, on a thread of its own that begins at
/// once. The destructor stops it and waits for it. GUI thread.
class LaunchFiles : public QObject
{
    Q_OBJECT

public:
    LaunchFiles(const QString &indexPath, const RecordSelection &selection, QObject *parent);
    ~LaunchFiles() override;

    /// To be asked after finished().
    const RecordFiles &files() const { return m_files; }

signals:
    void finished();

private:
    std::atomic<bool> m_stop{false};
    RecordFiles m_files;
    std::thread m_reader;
};
