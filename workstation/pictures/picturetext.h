#pragma once

#include "objectkind.h"
#include "pixelproblem.h"

#include <QString>

/// Words for people on what is shown, and on why something is not.
namespace PictureText {

/// A few letters for an icon.
QString shortKind(ObjectKind kind);
QString kind(ObjectKind kind);
/// A sentence; of an object without pixels it says what the object is.
QString problem(PixelProblem problem, ObjectKind kind);

} // namespace PictureText
