#pragma once

#include "seriesentry.h"
#include "thumbnailmaker.h"

#include <QHash>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <memory>

class ThumbnailStore;

/**
 * Lists the series of a selection and makes their thumbnails, on worker threads. A new selection ends the one
 * before: what is not decoded by then never is, and its results are not reported. Keeps the folder of
 * pictures within its bounds, too.
 *
 * GUI thread; the signals come there too. The destructor waits for what is being decoded.
 */
class ThumbnailLoader : public QObject
{
    Q_OBJECT

public:
    /// How many series one selection shows.
    static constexpr int mostSeries = 400;

    explicit ThumbnailLoader(const QString &indexPath, QObject *parent = nullptr);
    ~ThumbnailLoader() override;

    ThumbnailStore &store() { return *m_store; }
    /// Pictures of this selection that were reported already are not reported again, unless their files have
    /// changed.
    void load(const RecordKeys &records);
    void cancel();
    /// Cancels, and reports everything anew at the next load().
    void forget();
    /// From load() to finished() or cancel().
    bool isBusy() const { return m_isBusy; }
    /// How many pictures were decoded since this object was made; for tests and measuring.
    int decodedCount() const { return m_decoded; }
    /// Removes the pictures of images that the index no longer has; happens by itself some time after load().
    void sweep();

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
    void make(const SeriesEntry &entry, const QString &shown, const Token &stop);
    void onMade(qlonglong series, const QString &stamp, const Thumbnail &thumbnail, const Token &stop);
    void onSame(const Token &stop);
    void pruneSoon();

    const QString m_indexPath;
    const std::unique_ptr<ThumbnailStore> m_store;
    std::atomic<int> m_decoded{0};
    std::atomic<bool> m_isPruning{false};
    std::atomic<bool> m_stopChores{false};
    QThreadPool m_lister; ///< apart, so that a new list does not wait for pictures of the one before
    QThreadPool m_pool;
    QThreadPool m_chores; ///< care of the store
    QTimer m_sweep;
    Token m_stop; ///< set once the selection it belongs to is left
    RecordKeys m_records; ///< the selection
    QHash<qlonglong, QString> m_made; ///< the stamps of the series whose picture was reported
    int m_pending = 0;
    bool m_isBusy = false;
};
