#pragma once

#include "frameloader.h"
#include "listopener.h"
#include "windowchoice.h"

#include <QMainWindow>
#include <QTimer>

class ImageView;
class PreviewActions;
class PreviewBanner;
class PreviewFooter;

/**
 * Looks through the images of a series or through a list of files: a preview, not for diagnosis.
 *
 * Files are listed, read and decoded on worker threads; a picture that is not there yet leaves the one before
 * on screen. Deletes itself when it is closed, if it was made so. GUI thread.
 */
class PreviewWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PreviewWindow(QWidget *parent = nullptr);

    /// @param indexPath the index that has the series
    void showSeries(const QString &indexPath, qlonglong series);
    /// Files in this order; folders with what lies below them.
    void showFiles(const QStringList &paths);

    int count() const { return m_list.size(); }
    int current() const { return m_current; }
    /// The picture that is on screen; -1 for none.
    int shown() const { return m_shown; }
    bool isPlaying() const { return m_play.isActive(); }
    /// The window that the picture is shown with; not valid for colours and where there is no picture.
    WindowLevel windowLevel() const;
    ImageView *view() const { return m_view; }
    QString statusText() const;

public slots:
    /// Beyond either end it stays at that end.
    void goTo(int index);

signals:
    /// The images are listed; the first is being read.
    void opened();
    /// An image, or why there is none, is on screen.
    void imageShown(int index);
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void build();
    void connectActions();
    void open(const ListOpener::Reader &read);
    void setList(const ImageList &list);
    void showLoaded(int index, const LoadedFramePtr &loaded);
    void render();
    void updateStatus();
    void setPlaying(bool playing);
    void playNext();
    void onReady(int index);

    FrameLoader *const m_loader;
    ImageView *const m_view;
    PreviewBanner *const m_banner;
    PreviewFooter *const m_footer;
    ListOpener *const m_lists;
    PreviewActions *m_actions = nullptr;
    QTimer m_play;
    ImageList m_list;
    LoadedFramePtr m_loaded; ///< of the picture on screen
    WindowChoice m_choice;
    int m_current = -1;
    int m_shown = -1;
    int m_direction = 1;
};
