#pragma once

#include "imagelist.h"
#include "openfiles.h"
#include "pixelframe.h"

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QThreadPool>

#include <memory>

/// A decoded picture, or why there is none.
struct LoadedFrame
{
    PixelFrame frame;
    ImageInfo info;
    PixelProblem problem = PixelProblem::None;
};

using LoadedFramePtr = std::shared_ptr<const LoadedFrame>;

/**
 * Decodes the pictures of a list on worker threads: the one that is looked at first, then those that come
 * next in the direction of scrolling. Keeps what fits into a bound of memory, nearest first.
 *
 * GUI thread; ready() comes there. The destructor waits for what is being decoded.
 */
class FrameLoader : public QObject
{
    Q_OBJECT

public:
    static constexpr qint64 defaultCacheBytes = qint64(192) * 1024 * 1024;

    explicit FrameLoader(QObject *parent = nullptr, qint64 cacheBytes = defaultCacheBytes);
    ~FrameLoader() override;

    void setList(const ImageList &list);
    /// The picture at a place of the list, or null: then it is decoded next and ready() tells of it. Either
    /// way its neighbours are decoded too.
    /// @param direction 1 or -1, where scrolling goes
    LoadedFramePtr request(int index, int direction);
    qint64 cachedBytes() const;

signals:
    void ready(int index);

private:
    void schedule(int index, int direction);
    void work();
    bool takeNext(int &index, ImagePlace &place, int &generation);
    void keep(int index, const LoadedFramePtr &loaded);
    LoadedFramePtr decode(const ImagePlace &place);

    const qint64 m_cacheBytes;
    QThreadPool m_pool;
    OpenFiles m_files;
    mutable QMutex m_mutex; ///< guards all below
    ImageList m_list;
    int m_generation = 0; ///< counts the lists
    QVector<int> m_wanted; ///< the next one last
    QSet<int> m_inWork;
    QHash<int, LoadedFramePtr> m_cache;
    qint64 m_bytes = 0;
    int m_current = 0;
    int m_workers = 0;
};
