#include "previewactions.h"

#include "imageview.h"

#include <QAction>
#include <QMenu>
#include <QSpinBox>
#include <QToolBar>
#include <QToolButton>

namespace {

constexpr int leastRate = 1;
constexpr int mostRate = 60;
constexpr int usualRate = 15;
constexpr int mostPresets = 9;

QList<QKeySequence> keys(std::initializer_list<int> codes)
{
    QList<QKeySequence> list;
    for (const int code : codes) {
        list.append(QKeySequence(code));
    }
    return list;
}

QString withKey(const QString &tip, const QList<QKeySequence> &keys)
{
    return keys.isEmpty()
        ? tip
        : QStringLiteral("%1 (%2)").arg(tip, keys.first().toString(QKeySequence::NativeText));
}

} // namespace

PreviewActions::PreviewActions(QToolBar *bar, QWidget *window)
    : QObject(window)
    , m_bar(bar)
    , m_window(window)
{
    addMoves();
    addWindows();
    addZoom();
    addPlay();
    QAction *close =
        add(tr("Close"), tr("Closes the preview"), keys({Qt::Key_Escape, Qt::CTRL | Qt::Key_W}), false);
    connect(close, &QAction::triggered, this, &PreviewActions::closeRequested);
}

QAction *PreviewActions::add(
    const QString &text, const QString &tip, const QList<QKeySequence> &shortcuts, bool inBar)
{
    auto *action = new QAction(text, m_window);
    action->setShortcuts(shortcuts);
    action->setToolTip(withKey(tip, shortcuts));
    m_window->addAction(action);
    if (inBar) {
        m_bar->addAction(action);
        if (QWidget *button = m_bar->widgetForAction(action)) {
            button->setAccessibleName(tip);
            button->setFocusPolicy(Qt::TabFocus);
        }
    }
    return action;
}

void PreviewActions::addMoves()
{
    const auto step = [this](int by) { return [this, by] { emit stepRequested(by); }; };
    connect(add(tr("◀"), tr("Previous image"), keys({Qt::Key_PageUp, Qt::Key_Up, Qt::Key_Left}), true),
        &QAction::triggered, this, step(-1));
    connect(add(tr("▶"), tr("Next image"), keys({Qt::Key_PageDown, Qt::Key_Down, Qt::Key_Right}), true),
        &QAction::triggered, this, step(1));
    connect(add(tr("First"), tr("First image"), keys({Qt::Key_Home}), false), &QAction::triggered, this,
        &PreviewActions::firstRequested);
    connect(add(tr("Last"), tr("Last image"), keys({Qt::Key_End}), false), &QAction::triggered, this,
        &PreviewActions::lastRequested);
}

void PreviewActions::addWindows()
{
    m_bar->addSeparator();
    m_presets = new QMenu(m_window);
    auto *button = new QToolButton(m_bar);
    button->setText(tr("Window"));
    button->setToolTip(tr("Window and level; drag on the image to change them"));
    button->setAccessibleName(tr("Window and level"));
    button->setMenu(m_presets);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setFocusPolicy(Qt::TabFocus);
    m_presetButton = m_bar->addWidget(button);
    m_presetButton->setEnabled(false);
    // Not at once: what was picked is still to be triggered.
    connect(m_presets, &QMenu::aboutToHide, this, &PreviewActions::listWindows, Qt::QueuedConnection);
    m_invert = add(tr("Invert"), tr("Black for white"), keys({Qt::Key_I}), true);
    m_invert->setCheckable(true);
    connect(m_invert, &QAction::toggled, this, &PreviewActions::invertToggled);
}

void PreviewActions::addZoom()
{
    m_bar->addSeparator();
    connect(add(tr("Fit"), tr("Fits the image into the window"), keys({Qt::Key_F}), true),
        &QAction::triggered, this, &PreviewActions::fitRequested);
    connect(add(tr("1:1"), tr("One pixel of the image for one of the screen"), keys({Qt::Key_O}), true),
        &QAction::triggered, this, &PreviewActions::actualSizeRequested);
    connect(add(tr("−"), tr("Smaller"), keys({Qt::Key_Minus}), true), &QAction::triggered, this,
        [this] { emit zoomRequested(1 / ImageView::zoomStep); });
    connect(add(tr("+"), tr("Larger"), keys({Qt::Key_Plus, Qt::Key_Equal}), true), &QAction::triggered, this,
        [this] { emit zoomRequested(ImageView::zoomStep); });
}

void PreviewActions::addPlay()
{
    m_bar->addSeparator();
    m_play = add(tr("Play"), tr("Plays the images one after the other"), keys({Qt::Key_Space}), true);
    m_play->setCheckable(true);
    connect(m_play, &QAction::triggered, this, &PreviewActions::playToggled);
    m_rate = new QSpinBox(m_bar);
    m_rate->setRange(leastRate, mostRate);
    m_rate->setValue(usualRate);
    m_rate->setSuffix(tr(" images/s"));
    m_rate->setAccessibleName(tr("Images a second"));
    m_rate->setToolTip(tr("How fast the images play"));
    connect(m_rate, QOverload<int>::of(&QSpinBox::valueChanged), this, &PreviewActions::rateChanged);
    m_bar->addWidget(m_rate);
}

QAction *PreviewActions::addPreset(const QString &name, int key)
{
    auto *action = m_presets->addAction(name);
    if (key >= 1 && key <= mostPresets) {
        action->setShortcut(QKeySequence(Qt::Key_0 + key));
    }
    m_window->addAction(action); // so that its key works while the menu is closed
    return action;
}

void PreviewActions::setWindows(const QVector<WindowPreset> &fileWindows, bool isTomography, bool isGrey)
{
    m_wanted = {fileWindows.mid(1), isTomography, isGrey};
    if (!m_presets->isVisible()) {
        listWindows();
    }
}

void PreviewActions::listWindows()
{
    if (m_wanted == m_listed) {
        return;
    }
    m_listed = m_wanted;
    for (QAction *old : m_presets->actions()) {
        m_window->removeAction(old);
    }
    m_presets->clear();
    m_presetButton->setEnabled(m_listed.isGrey);
    if (!m_listed.isGrey) {
        return;
    }
    int key = 1;
    connect(addPreset(tr("From the file"), key++), &QAction::triggered, this,
        &PreviewActions::fileWindowRequested);
    connect(addPreset(tr("Automatic"), key++), &QAction::triggered, this,
        &PreviewActions::automaticWindowRequested);
    const auto addFixed = [&](const QString &name, const WindowLevel &window) {
        connect(addPreset(QStringLiteral("%1 (%2/%3)").arg(name).arg(window.centre).arg(window.width), key++),
            &QAction::triggered, this, [this, window] { emit windowRequested(window); });
    };
    if (m_listed.isTomography) {
        for (const NamedWindow &named : WindowChoice::tomographyWindows()) {
            addFixed(named.name, named.window);
        }
    }
    for (int i = 0; i < m_listed.others.size() && key <= mostPresets; ++i) {
        const WindowPreset &preset = m_listed.others.at(i);
        QString name = preset.name.left(40).replace(QLatin1Char('&'), QLatin1String("&&"));
        addFixed(name.isEmpty() ? tr("File, %1").arg(i + 2) : name, preset.window);
    }
}

bool PreviewActions::isInverted() const
{
    return m_invert->isChecked();
}

void PreviewActions::setPlaying(bool playing)
{
    m_play->setChecked(playing);
    m_play->setText(playing ? tr("Pause") : tr("Play"));
}

void PreviewActions::setPlayable(bool playable)
{
    m_play->setEnabled(playable);
    m_rate->setEnabled(playable);
}

int PreviewActions::framesPerSecond() const
{
    return m_rate->value();
}

void PreviewActions::setFramesPerSecond(int rate)
{
    m_rate->setValue(rate);
}
