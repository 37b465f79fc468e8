#include "framedescription.h"

#include "headeritem.h"

#include <algorithm>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

using HeaderItem::decimal;
using HeaderItem::within;

constexpr int mostWindows = 16;

void readWindows(DcmItem &item, QVector<WindowPreset> &windows)
{
    for (unsigned long i = 0; i < mostWindows; ++i) {
        WindowPreset preset;
        if (!decimal(item, DCM_WindowCenter, i, preset.window.centre)
            || !decimal(item, DCM_WindowWidth, i, preset.window.width)) {
            return;
        }
        OFString name;
        if (item.findAndGetOFString(DCM_WindowCenterWidthExplanation, name, i).good()) {
            preset.name = QString::fromUtf8(name.c_str()).trimmed();
        }
        if (preset.window.isValid()) {
            windows.append(preset);
        }
    }
}

/// Takes what an item says, directly or in the groups of multi-frame objects; leaves the rest.
void readValues(DcmItem &item, FrameValues &values)
{
    DcmItem &rescale = within(item, DCM_PixelValueTransformationSequence);
    double slope = 0;
    if (decimal(rescale, DCM_RescaleSlope, 0, slope) && slope != 0) {
        values.slope = slope;
    }
    decimal(rescale, DCM_RescaleIntercept, 0, values.intercept);
    QVector<WindowPreset> windows;
    readWindows(within(item, DCM_FrameVOILUTSequence), windows);
    if (!windows.isEmpty()) {
        values.windows = windows;
    }
}

bool readSpacing(DcmItem &item, QSizeF &spacing)
{
    double row = 0;
    double column = 0;
    for (const DcmTagKey &tag : {DCM_PixelSpacing, DCM_ImagerPixelSpacing}) {
        if (decimal(item, tag, 0, row) && decimal(item, tag, 1, column) && row > 0 && column > 0) {
            spacing = QSizeF(column, row);
            return true;
        }
    }
    return false;
}

} // namespace

void readFrames(DcmItem &data, ImageInfo &info)
{
    readSpacing(data, info.spacing);
    double rate = 0;
    if (!decimal(data, DCM_FrameTime, 0, info.frameMs) && decimal(data, DCM_CineRate, 0, rate) && rate > 0) {
        info.frameMs = 1000 / rate;
    }
    readValues(data, info.values);
    DcmItem *shared = nullptr;
    if (data.findAndGetSequenceItem(DCM_SharedFunctionalGroupsSequence, shared, 0).good() && shared) {
        readValues(*shared, info.values);
        readSpacing(within(*shared, DCM_PixelMeasuresSequence), info.spacing);
    }
    DcmSequenceOfItems *frames = nullptr;
    if (data.findAndGetSequence(DCM_PerFrameFunctionalGroupsSequence, frames).good() && frames) {
        const unsigned long count =
            std::min<unsigned long>(frames->card(), static_cast<unsigned long>(info.frames));
        for (unsigned long i = 0; i < count; ++i) {
            FrameValues values = info.values;
            readValues(*frames->getItem(i), values);
            info.frameValues.append(values);
        }
    }
}
