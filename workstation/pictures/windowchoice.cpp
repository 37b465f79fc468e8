#include "windowchoice.h"

#include "frameimage.h"

#include <algorithm>
#include <cmath>

void WindowChoice::use(const WindowLevel &window)
{
    m_mode = Mode::Fixed;
    m_fixed = window;
}

WindowLevel WindowChoice::of(const PixelFrame &frame) const
{
    switch (m_mode) {
    case Mode::File:
        return FrameImage::defaultWindow(frame);
    case Mode::Automatic:
        return FrameImage::autoWindow(frame);
    case Mode::Fixed:
        break;
    }
    return m_fixed;
}

void WindowChoice::drag(const PixelFrame &frame, double widthShare, double centreShare)
{
    const double step = std::abs(frame.slope);
    const double range = std::max(step, std::abs(frame.valueOf(frame.most) - frame.valueOf(frame.least)));
    WindowLevel window = of(frame);
    // Narrow windows change slower, so that soft tissue can be set as well as bone.
    const double pace = std::clamp(window.width, range / 20, range);
    window.width = std::clamp(window.width + widthShare * pace, step, 4 * range);
    window.centre += centreShare * pace;
    use(window);
}

QVector<NamedWindow> WindowChoice::tomographyWindows()
{
    return {{tr("Abdomen"), {60, 400}}, {tr("Lung"), {-600, 1500}}, {tr("Bone"), {400, 1800}},
        {tr("Brain"), {40, 80}}};
}
