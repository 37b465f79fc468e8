#pragma once

#include "imageinfo.h"

#include <QWidget>

class QLabel;
class QSlider;

/// The line below a previewed picture: which image of how many it is, with a slider that goes to another, and
/// how it is shown. GUI thread.
class PreviewFooter : public QWidget
{
    Q_OBJECT

public:
    explicit PreviewFooter(QWidget *parent = nullptr);

    /// Other images; the first one is shown.
    void setCount(int images);
    void setCurrent(int index);
    /// @param window not valid where the picture has none; @param scale 0 where there is no picture
    void setPicture(const WindowLevel &window, double scale);
    QString text() const;

signals:
    void imageWanted(int index);

private:
    void showPosition();

    QLabel *const m_position;
    QSlider *const m_slider;
    QLabel *const m_level;
    int m_count = 0;
};
