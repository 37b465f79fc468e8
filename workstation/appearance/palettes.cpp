#include "palettes.h"

#include <algorithm>
#include <cmath>

namespace {

struct RoleColour
{
    QPalette::ColorRole role;
    QRgb colour;
};

constexpr RoleColour lightColours[] = {
    {QPalette::Window, 0xfff0f1f3},
    {QPalette::WindowText, 0xff1b1d21},
    {QPalette::Base, 0xffffffff},
    {QPalette::AlternateBase, 0xfff5f7fa},
    {QPalette::Text, 0xff1b1d21},
    {QPalette::Button, 0xffe9ebee},
    {QPalette::ButtonText, 0xff1b1d21},
    {QPalette::BrightText, 0xffffffff},
    {QPalette::Light, 0xffffffff},
    {QPalette::Midlight, 0xfff7f8fa},
    {QPalette::Mid, 0xffb4b9c1},
    {QPalette::Dark, 0xff6b717b},
    {QPalette::Shadow, 0xff4a4f57},
    {QPalette::Highlight, 0xff2b66b8},
    {QPalette::HighlightedText, 0xffffffff},
    {QPalette::Link, 0xff0b57c2},
    {QPalette::LinkVisited, 0xff6b3fa0},
    {QPalette::ToolTipBase, 0xfffff8dc},
    {QPalette::ToolTipText, 0xff1b1d21},
    {QPalette::PlaceholderText, 0xff5f666f},
};

constexpr RoleColour darkColours[] = {
    {QPalette::Window, 0xff2f3338},
    {QPalette::WindowText, 0xffe6e8eb},
    {QPalette::Base, 0xff1a1c20},
    {QPalette::AlternateBase, 0xff23262b},
    {QPalette::Text, 0xffe6e8eb},
    {QPalette::Button, 0xff393d44},
    {QPalette::ButtonText, 0xffe6e8eb},
    {QPalette::BrightText, 0xffffffff},
    {QPalette::Light, 0xff5a6069},
    {QPalette::Midlight, 0xff4d525a},
    {QPalette::Mid, 0xff2a2d32},
    {QPalette::Dark, 0xff1d1f23},
    {QPalette::Shadow, 0xff101214},
    {QPalette::Highlight, 0xff2b66b8},
    {QPalette::HighlightedText, 0xffffffff},
    {QPalette::Link, 0xff8ebcff},
    {QPalette::LinkVisited, 0xffc6a8f7},
    {QPalette::ToolTipBase, 0xff4a5059},
    {QPalette::ToolTipText, 0xfff0f1f3},
    {QPalette::PlaceholderText, 0xffa3a9b2},
};

constexpr QRgb lightDisabledText = 0xff62676f;
constexpr QRgb lightDisabledHighlight = 0xffe4e7ec;
constexpr QRgb darkDisabledText = 0xffb3b8c0;
constexpr QRgb darkDisabledHighlight = 0xff42474e;

constexpr QRgb lightFaintMark = 0xffd3d8df;
constexpr QRgb lightFaintMarkText = 0xff1b1d21;
constexpr QRgb darkFaintMark = 0xff454b54;
constexpr QRgb darkFaintMarkText = 0xffe6e8eb;

template <std::size_t Count>
QPalette paletteOf(const RoleColour (&colours)[Count], QRgb disabledText, QRgb disabledHighlight)
{
    QPalette palette;
    for (const RoleColour &entry : colours) {
        palette.setColor(QPalette::All, entry.role, QColor(entry.colour));
    }
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
             QPalette::HighlightedText, QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited}) {
        palette.setColor(QPalette::Disabled, role, QColor(disabledText));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(disabledHighlight));
    palette.setColor(QPalette::Disabled, QPalette::Base, palette.color(QPalette::Active, QPalette::Window));
    return palette;
}

double linear(double channel)
{
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

} // namespace

namespace Palettes {

QPalette light()
{
    return paletteOf(lightColours, lightDisabledText, lightDisabledHighlight);
}

QPalette dark()
{
    return paletteOf(darkColours, darkDisabledText, darkDisabledHighlight);
}

MarkColours faintMark(bool isDark)
{
    return isDark ? MarkColours{QColor(darkFaintMark), QColor(darkFaintMarkText)}
                  : MarkColours{QColor(lightFaintMark), QColor(lightFaintMarkText)};
}

bool isDark(const QPalette &palette)
{
    constexpr int middleLightness = 128;
    return palette.color(QPalette::Window).lightness() < middleLightness;
}

double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

} // namespace Palettes
