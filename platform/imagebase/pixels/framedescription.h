#pragma once

#include "imageinfo.h"

class DcmItem;

/// How a header says that the values of its frames are meant and shown: rescaling, windows, spacing, time.
/// The groups of multi-frame objects are looked into. @param info has its number of frames
void readFrames(DcmItem &data, ImageInfo &info);
