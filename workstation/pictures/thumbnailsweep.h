#pragma once

#include <QString>

#include <atomic>

class ThumbnailStore;

/// Removes the pictures of instances that an index does not have; none where the index cannot be asked. On a
/// connection of its own: for a worker thread.
void sweepThumbnails(ThumbnailStore &store, const QString &indexPath, const std::atomic<bool> &stop);
