#pragma once

#include "windowchoice.h"

#include <QObject>

class QAction;
class QMenu;
class QSpinBox;
class QToolBar;
class QWidget;

/**
 * What can be done in the preview: the tool bar with its actions and their keys. Tells what was asked for.
 * Owned by the window; GUI thread.
 */
class PreviewActions : public QObject
{
    Q_OBJECT

public:
    PreviewActions(QToolBar *bar, QWidget *window);

    /// Lists the windows for an image: the file's own, and those of a modality. A list that is open stays
    /// until it is closed.
    void setWindows(const QVector<WindowPreset> &fileWindows, bool isTomography, bool isGrey);
    bool isInverted() const;
    void setPlaying(bool playing);
    void setPlayable(bool playable);
    int framesPerSecond() const;
    void setFramesPerSecond(int rate);

signals:
    void stepRequested(int by);
    void firstRequested();
    void lastRequested();
    void fileWindowRequested();
    void automaticWindowRequested();
    void windowRequested(const WindowLevel &window);
    void invertToggled();
    void fitRequested();
    void zoomRequested(double factor);
    void actualSizeRequested();
    void playToggled();
    void rateChanged();
    void closeRequested();

private:
    struct Windows
    {
        QVector<WindowPreset> others; ///< of the file, behind its first
        bool isTomography = false;
        bool isGrey = false;

        bool operator==(const Windows &other) const
        {
            return others == other.others && isTomography == other.isTomography && isGrey == other.isGrey;
        }
    };

    QAction *add(const QString &text, const QString &tip, const QList<QKeySequence> &keys, bool inBar);
    void addMoves();
    void addWindows();
    void addZoom();
    void addPlay();
    void listWindows();
    QAction *addPreset(const QString &name, int key);

    QToolBar *const m_bar;
    QWidget *const m_window;
    QMenu *m_presets = nullptr;
    Windows m_wanted;
    Windows m_listed;
    QAction *m_presetButton = nullptr;
    QAction *m_invert = nullptr;
    QAction *m_play = nullptr;
    QSpinBox *m_rate = nullptr;
};
