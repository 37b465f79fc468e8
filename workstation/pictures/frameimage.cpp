#include "frameimage.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int greyValues = PixelFrame::greyValues;
/// Share of the pixels at either end that the automatic window leaves out.
constexpr double leftOut = 0.005;

/// The grey of the screen for each grey of a frame that occurs in it.
std::vector<QRgb> lookUp(const PixelFrame &frame, const WindowLevel &window, bool invert)
{
    std::vector<QRgb> table(greyValues, qRgb(0, 0, 0));
    const double width = std::max(window.width, 1e-9);
    const double lowest = window.centre - width / 2;
    for (int grey = frame.least; grey <= frame.most; ++grey) {
        const double share = std::clamp((frame.valueOf(grey) - lowest) / width, 0.0, 1.0);
        const auto shade = static_cast<int>(std::lround(share * 255));
        const int shown = invert ? 255 - shade : shade;
        table[std::size_t(grey)] = qRgb(shown, shown, shown);
    }
    if (frame.padding >= 0) {
        table[std::size_t(frame.padding)] = qRgb(0, 0, 0);
    }
    return table;
}

QImage renderColour(const PixelFrame &frame, bool invert)
{
    QImage image(frame.columns, frame.rows, QImage::Format_RGB32);
    const uchar *in = frame.rgb.constData();
    for (int row = 0; row < frame.rows && !image.isNull(); ++row) {
        auto *out = reinterpret_cast<QRgb *>(image.scanLine(row));
        for (int column = 0; column < frame.columns; ++column, in += 3) {
            *out++ = qRgb(in[0], in[1], in[2]);
        }
    }
    if (invert) {
        image.invertPixels();
    }
    return image;
}

} // namespace

WindowLevel FrameImage::autoWindow(const PixelFrame &frame)
{
    if (frame.isColour() || frame.grey.isEmpty()) {
        return {};
    }
    std::vector<int> counts(greyValues, 0);
    int total = 0;
    for (const quint16 grey : frame.grey) {
        if (int(grey) != frame.padding) {
            ++counts[grey];
            ++total;
        }
    }
    const int enough = int(total * leftOut);
    int least = frame.least;
    int most = frame.most;
    for (int seen = 0; least < most && (seen += counts[std::size_t(least)]) <= enough;) {
        ++least;
    }
    for (int seen = 0; most > least && (seen += counts[std::size_t(most)]) <= enough;) {
        --most;
    }
    if (least == most) { // a few bright pixels on nothing
        least = frame.least;
        most = frame.most;
    }
    const double low = frame.valueOf(least);
    const double high = frame.valueOf(most);
    return {(low + high) / 2, std::max(std::abs(high - low), std::abs(frame.slope))};
}

WindowLevel FrameImage::defaultWindow(const PixelFrame &frame)
{
    return frame.windows.isEmpty() ? autoWindow(frame) : frame.windows.first().window;
}

PixelFrame FrameImage::reduced(const PixelFrame &frame, const QSize &size)
{
    if (frame.columns <= size.width() || frame.rows <= size.height()) {
        return frame;
    }
    PixelFrame small = frame;
    small.columns = size.width();
    small.rows = size.height();
    small.grey.clear();
    small.rgb.clear();
    for (int row = 0; row < small.rows; ++row) {
        const int line = int(qint64(row) * frame.rows / small.rows) * frame.columns;
        for (int column = 0; column < small.columns; ++column) {
            const int from = line + int(qint64(column) * frame.columns / small.columns);
            if (!frame.isColour()) {
                small.grey.append(frame.grey.at(from));
                continue;
            }
            for (int colour = 0; colour < 3; ++colour) {
                small.rgb.append(frame.rgb.at(from * 3 + colour));
            }
        }
    }
    return small;
}

QImage FrameImage::render(const PixelFrame &frame, const WindowLevel &window, bool invert)
{
    if (frame.isColour()) {
        return renderColour(frame, invert);
    }
    const std::vector<QRgb> table = lookUp(frame, window, invert != frame.isInverted);
    QImage image(frame.columns, frame.rows, QImage::Format_RGB32);
    const quint16 *in = frame.grey.constData();
    for (int row = 0; row < frame.rows && !image.isNull(); ++row) {
        auto *out = reinterpret_cast<QRgb *>(image.scanLine(row));
        for (int column = 0; column < frame.columns; ++column) {
            *out++ = table[*in++];
        }
    }
    return image;
}
