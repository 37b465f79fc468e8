#pragma once

#include <QStringList>
#include <QWidget>

/// How well the texts of a window can be read.
namespace TextContrast {

/// Texts with less than the contrast of 4.5 to the ground that they stand on. Labels, buttons, fields and
/// combo boxes in sight are measured by their pixels, where the text is and neither frame nor icon; views,
/// headers, group boxes and menus by their colours.
QStringList faintTexts(QWidget &window);

} // namespace TextContrast
