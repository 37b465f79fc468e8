#include "previewwindow.h"

#include "frameimage.h"
#include "imageview.h"
#include "picturetext.h"
#include "previewactions.h"
#include "previewbanner.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr QSize usualSize{900, 800};
constexpr int secondMs = 1000;
constexpr int mostListers = 8;
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
    , m_stopListing(std::make_shared<std::atomic<bool>>(false))
{
    m_listers.setMaxThreadCount(mostListers);
    setObjectName(QStringLiteral("PreviewWindow"));
    setWindowTitle(tr("Preview (not for diagnosis)"));
    resize(usualSize);
    build();
    connectActions();
    connect(m_loader, &FrameLoader::ready, this, &PreviewWindow::onReady);
    connect(m_slider, &QSlider::valueChanged, this, &PreviewWindow::goTo);
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

PreviewWindow::~PreviewWindow()
{
    *m_stopListing = true;
    m_listers.clear();
    m_listers.waitForDone(); // for one file
}

void PreviewWindow::build()
{
    auto *bar = addToolBar(tr("Preview"));
    bar->setObjectName(QStringLiteral("previewBar"));
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_actions = new PreviewActions(bar, this);
    m_slider = new QSlider(Qt::Horizontal, this);
    m_slider->setAccessibleName(tr("Image"));
    m_slider->setToolTip(tr("Goes to an image"));
    m_position = new QLabel(this);
    m_level = new QLabel(this);
    m_view->setAccessibleName(tr("Picture"));
    // Wide enough for all that comes, so that nothing moves while images go by.
    for (const auto &[label, widest] : {std::pair(m_position, tr("Image %1 of %2").arg(99999).arg(99999)),
             std::pair(m_level, QStringLiteral("W 99999  L -99999   9999 %"))}) {
        label->setFixedWidth(label->fontMetrics().horizontalAdvance(widest));
    }
    m_level->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_banner);
    column->addWidget(m_view, 1);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(m_position);
    row->addWidget(m_slider, 1);
    row->addWidget(m_level);
    column->addLayout(row);
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
    openList([indexPath, series](
                 const std::atomic<bool> &stop) { return ImageLists::ofSeries(indexPath, series, stop); });
}

void PreviewWindow::showFiles(const QStringList &paths)
{
    openList([paths](const std::atomic<bool> &stop) { return ImageLists::ofFiles(paths, stop); });
}

void PreviewWindow::openList(const ListReader &read)
{
    *m_stopListing = true;
    m_stopListing = std::make_shared<std::atomic<bool>>(false);
    setList({});
    m_view->setMessage(tr("Loading…"));
    m_listers.start([this, read, stop = m_stopListing] {
        const ImageList list = read(*stop);
        QMetaObject::invokeMethod(
            this,
            [this, list, stop] {
                if (!*stop) {
                    setList(list);
                    emit opened();
                }
            },
            Qt::QueuedConnection);
    });
}

void PreviewWindow::setList(const ImageList &list)
{
    setPlaying(false);
    m_loader->setList(list);
    m_list = list;
    m_loaded.reset();
    m_current = m_shown = -1;
    {
        const QSignalBlocker silent(m_slider);
        m_slider->setRange(0, std::max(0, list.size() - 1));
        m_slider->setValue(0);
    }
    m_slider->setEnabled(list.size() > 1);
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
    m_slider->setValue(index);
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
    return m_position->text() + QLatin1Char(' ') + m_level->text();
}

void PreviewWindow::updateStatus()
{
    m_position->setText(m_list.isEmpty() ? QString() : tr("Image %1 of %2").arg(m_current + 1).arg(count()));
    QStringList parts;
    const WindowLevel window = windowLevel();
    if (window.isValid()) {
        parts.append(tr("W %1  L %2").arg(std::lround(window.width)).arg(std::lround(window.centre)));
    }
    if (!m_view->picture().isNull()) {
        parts.append(tr("%1 %").arg(std::lround(m_view->scale() * 100)));
    }
    m_level->setText(parts.join(QStringLiteral("   ")));
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
