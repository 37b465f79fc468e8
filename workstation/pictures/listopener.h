#pragma once

#include "imagelist.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>

/// Lists images on worker threads, several, so that nothing waits for a slow one that is no longer wanted:
/// only what was asked for last is answered. GUI thread.
class ListOpener : public QObject
{
    Q_OBJECT

public:
    /// Runs on a worker thread and ends soon after stop is set.
    using Reader = std::function<ImageList(const std::atomic<bool> &stop)>;

    explicit ListOpener(QObject *parent = nullptr);
    /// Waits for what runs, as long as it takes to read one file.
    ~ListOpener() override;

    void open(const Reader &read);

signals:
    void listed(const ImageList &list);

private:
    QThreadPool m_workers;
    std::shared_ptr<std::atomic<bool>> m_stop;
};
