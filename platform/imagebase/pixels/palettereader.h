#pragma once

#include "palette.h"

class DcmItem;

/// The colours that a header gives; empty where its tables do not fit their description.
Palette readPalette(DcmItem &item);
