#pragma once

#include <QPalette>

/// The colours of the two themes. Every text has a contrast of at least 4.5 to what it stands on, disabled
/// ones and placeholders too.
namespace Palettes {

QPalette light();
QPalette dark();

/// The colours of a row that is marked while nothing acts on it.
struct MarkColours
{
    QColor ground;
    QColor text;
};
MarkColours faintMark(bool isDark);

/// Whether light texts belong on this palette, whoever made it.
bool isDark(const QPalette &palette);

/// WCAG's contrast of two opaque colours: 1 to 21.
double contrast(const QColor &one, const QColor &other);

} // namespace Palettes
