#pragma once

#include "recordfiles.h"

#include <QObject>

#include <atomic>
#include <thread>

struct RecordSelection;

/// Reads the files of a selection, of which there may be very many, on a thread of its own. The destructor
/// stops it and waits for it. GUI thread.
class LaunchFiles : public QObject
{
    Q_OBJECT

public:
    explicit LaunchFiles(QObject *parent);
    ~LaunchFiles() override;

    /// Called once, by whoever has connected to finished() before: it may come at any moment from then on.
    void start(const QString &indexPath, const RecordSelection &selection);
    /// To be asked after finished().
    const RecordFiles &files() const { return m_files; }

signals:
    void finished();

private:
    std::atomic<bool> m_stop{false};
    RecordFiles m_files;
    std::thread m_reader;
};
