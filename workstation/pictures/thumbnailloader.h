#pragma once

#include "objectkind.h"
#include "pixelproblem.h"
#include "seriesentry.h"

#include <QHash>
#include <QImage>
#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <memory>

class ThumbnailStore;

/// What a series shows instead of itself: a picture, or what it is and why there is none.
struct Thumbnail
{
    QImage picture;
    ObjectKind kind = ObjectKind::Image;
    PixelProblem problem = PixelProblem::None;
};

/**
 * Lists the series of a selection and makes their thumbnails, on worker threads. A new selection ends the one
 * before: what is not decoded by then never is, and its results are not reported.
 *
 * GUI thread; the signals come there too. The destructor waits for what is being decoded.
 */
class ThumbnailLoader : public QObject
{
    Q_OBJECT

public:
    /// Of either side of a picture, in pixels.
    static constexpr int side = 128;
    /// How many series one selection shows.
    static constexpr int mostSeries = 400;

    explicit ThumbnailLoader(const QString &indexPath, QObject *parent = nullptr);
    ~ThumbnailLoader() override;

    ThumbnailStore &store() { return *m_store; }
    /// Pictures of this selection that were reported already are not reported again.
    void load(const RecordKeys &records);
    void cancel();
    /// Cancels, and reports everything anew at the next load().
    void forget();
    /// From load() to finished() or cancel().
    bool isBusy() const { return m_isBusy; }
    /// How many pictures were decoded since this object was made; for tests and measuring.
    int decodedCount() const { return *m_decoded; }

    /// Makes one thumbnail here and now, from the store where it has it.
    /// @param stop looked at before anything is decoded
    static Thumbnail make(const SeriesEntry &entry, ThumbnailStore &store, const std::atomic<bool> &stop,
        std::atomic<int> &decoded);

signals:
    void listed(const SeriesEntries &series);
    void loaded(qlonglong series, const Thumbnail &thumbnail);
    /// All pictures of the selection have been reported.
    void finished();

private:
    using Token = std::shared_ptr<std::atomic<bool>>;
    void list(const RecordKeys &records, const Token &stop);
    void onListed(const SeriesEntries &series, const Token &stop);
    void finish();
    void onMade(const SeriesEntry &entry, const Thumbnail &thumbnail, const Token &stop);

    const QString m_indexPath;
    const std::shared_ptr<ThumbnailStore> m_store;
    const std::shared_ptr<std::atomic<int>> m_decoded;
    QThreadPool m_pool;
    Token m_stop; ///< set once the selection it belongs to is left
    RecordKeys m_records; ///< the selection
    QHash<qlonglong, QString> m_made; ///< its series with a picture reported, and the instance that it shows
    int m_pending = 0;
    bool m_isBusy = false;
};
