#include "previewwindow.h"

#include "frameimage.h"
#include "imageview.h"
#include "picturetext.h"
#include "previewactions.h"
#include "previewbanner.h"
#include "previewfooter.h"

#include <QCloseEvent>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr QSize usualSize{900, 800};
constexpr int secondMs = 1000;
const QLatin1String tomography("CT");

double pixelHeight(const ImageInfo &info)
{
    return info.spacing.isEmpty() ? 1 : info.spacing.height() / info.spacing.width();
}

} // namespace

PreviewWindow::PreviewWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_loader(new FrameLoader(this))
    , m_view(new ImageView(this))
    , m_banner(new PreviewBanner(this))
    , m_footer(new PreviewFooter(this))
    , m_lists(new ListOpener(this))
{
    setObjectName(QStringLiteral("PreviewWindow"));
    setWindowTitle(tr("Preview (not for diagnosis)"));
    resize(usualSize);
    build();
    connectActions();
    connect(m_loader, &FrameLoader::ready, this, &PreviewWindow::onReady);
    connect(m_lists, &ListOpener::listed, this, [this](const ImageList &list) {
        setList(list);
        emit opened();
    });
    connect(m_footer, &PreviewFooter::imageWanted, this, &PreviewWindow::goTo);
    connect(m_view, &ImageView::scrolled, this, [this](int steps) { goTo(m_current + steps); });
    connect(m_view, &ImageView::scaleChanged, this, &PreviewWindow::updateStatus);
    connect(m_view, &ImageView::windowDragged, this, [this](double width, double centre) {
        if (m_loaded && !m_loaded->frame.grey.isEmpty()) {
            m_choice.drag(m_loaded->frame, width, centre);
            render();
        }
    });
    connect(&m_play, &QTimer::timeout, this, &PreviewWindow::playNext);
    setList({});
    m_view->setFocus();
}

void PreviewWindow::build()
{
    auto *bar = addToolBar(tr("Preview"));
    bar->setObjectName(QStringLiteral("previewBar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_actions = new PreviewActions(bar, this);
    m_view->setAccessibleName(tr("Picture"));
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_banner);
    column->addWidget(m_view, 1);
    column->addWidget(m_footer);
    setCentralWidget(centre);
}

void PreviewWindow::connectActions()
{
    using Actions = PreviewActions;
    connect(m_actions, &Actions::stepRequested, this, [this](int by) { goTo(m_current + by); });
    connect(m_actions, &Actions::firstRequested, this, [this] { goTo(0); });
    connect(m_actions, &Actions::lastRequested, this, [this] { goTo(count() - 1); });
    connect(m_actions, &Actions::fileWindowRequested, this, [this] {
        m_choice.useFile();
        render();
    });
    connect(m_actions, &Actions::automaticWindowRequested, this, [this] {
        m_choice.useAutomatic();
        render();
    });
    connect(m_actions, &Actions::windowRequested, this, [this](const WindowLevel &window) {
        m_choice.use(window);
        render();
    });
    connect(m_actions, &Actions::invertToggled, this, &PreviewWindow::render);
    connect(m_actions, &Actions::fitRequested, m_view, &ImageView::fit);
    connect(m_actions, &Actions::actualSizeRequested, this, [this] { m_view->setScale(1); });
    connect(m_actions, &Actions::zoomRequested, this,
        [this](double factor) { m_view->setScale(m_view->scale() * factor); });
    connect(m_actions, &Actions::playToggled, this, [this] { setPlaying(!isPlaying()); });
    connect(m_actions, &Actions::rateChanged, this,
        [this] { m_play.setInterval(secondMs / m_actions->framesPerSecond()); });
    connect(m_actions, &Actions::closeRequested, this, &QWidget::close);
}

void PreviewWindow::showSeries(const QString &indexPath, qlonglong series)
{
    open([indexPath, series](
             const std::atomic<bool> &stop) { return ImageLists::ofSeries(indexPath, series, stop); });
}

void PreviewWindow::showFiles(const QStringList &paths)
{
    open([paths](const std::atomic<bool> &stop) { return ImageLists::ofFiles(paths, stop); });
}

void PreviewWindow::open(const ListOpener::Reader &read)
{
    setList({});
    m_view->setMessage(tr("Loading…"));
    m_lists->open(read);
}

void PreviewWindow::setList(const ImageList &list)
{
    setPlaying(false);
    m_loader->setList(list);
    m_list = list;
    m_loaded.reset();
    m_current = m_shown = -1;
    m_footer->setCount(list.size());
    m_actions->setPlayable(list.size() > 1);
    m_actions->setWindows({}, false, false);
    m_banner->clear();
    m_view->setMessage(list.isEmpty() ? tr("There is no image to show.") : tr("Loading…"));
    updateStatus();
    goTo(0);
}

void PreviewWindow::goTo(int index)
{
    index = std::clamp(index, 0, std::max(0, count() - 1));
    if (index == m_current || m_list.isEmpty()) {
        return;
    }
    m_direction = index < m_current ? -1 : 1;
    m_current = index;
    m_footer->setCurrent(index);
    if (const LoadedFramePtr loaded = m_loader->request(index, m_direction)) {
        showLoaded(index, loaded);
    } else {
        updateStatus();
    }
}

void PreviewWindow::onReady(int index)
{
    if (index == m_current && index != m_shown) {
        if (const LoadedFramePtr loaded = m_loader->request(index, m_direction)) {
            showLoaded(index, loaded);
        }
    }
}

void PreviewWindow::showLoaded(int index, const LoadedFramePtr &loaded)
{
    const bool isOtherFile = m_shown < 0 || m_list.at(m_shown).path != m_list.at(index).path;
    const bool isFirst = m_shown < 0;
    m_loaded = loaded;
    m_shown = index;
    const ImageInfo &info = loaded->info;
    if (isOtherFile) {
        m_banner->show(info);
    }
    m_actions->setWindows(
        loaded->frame.windows, info.header[Attribute::Modality] == tomography, !loaded->frame.grey.isEmpty());
    if (isFirst && info.frameMs > 0) {
        m_actions->setFramesPerSecond(int(std::lround(secondMs / info.frameMs)));
    }
    render();
    emit imageShown(index);
}

WindowLevel PreviewWindow::windowLevel() const
{
    return m_loaded && !m_loaded->frame.grey.isEmpty() ? m_choice.of(m_loaded->frame) : WindowLevel();
}

void PreviewWindow::render()
{
    if (!m_loaded) {
        return;
    }
    if (m_loaded->problem != PixelProblem::None) {
        m_view->setMessage(PictureText::problem(m_loaded->problem, m_loaded->info.kind));
    } else {
        m_view->setPicture(FrameImage::render(m_loaded->frame, windowLevel(), m_actions->isInverted()),
            pixelHeight(m_loaded->info));
    }
    updateStatus();
}

QString PreviewWindow::statusText() const
{
    return m_footer->text();
}

void PreviewWindow::updateStatus()
{
    m_footer->setPicture(windowLevel(), m_view->picture().isNull() ? 0 : m_view->scale());
}

void PreviewWindow::setPlaying(bool playing)
{
    playing ? m_play.start(secondMs / m_actions->framesPerSecond()) : m_play.stop();
    m_actions->setPlaying(playing);
}

/// A picture that is not there yet is waited for: playing never skips one.
void PreviewWindow::playNext()
{
    if (m_shown == m_current) {
        goTo(m_current + 1 < count() ? m_current + 1 : 0);
        m_direction = 1;
    }
}

void PreviewWindow::closeEvent(QCloseEvent *event)
{
    setPlaying(false);
    QMainWindow::closeEvent(event);
    if (event->isAccepted()) {
        emit closed();
    }
}
