#pragma once

#include "imagebase_export.h"

#include <QString>

/// What a DICOM object is for a person who looks at it.
enum class ObjectKind : quint8 {
    Image,
    Report, ///< structured report
    Document, ///< encapsulated PDF, CDA or model
    KeyObjects,
    PresentationState,
    Waveform,
    Plan, ///< of a radiation treatment
    Structures, ///< contours of a radiation treatment
    Registration,
    Protocol, ///< hanging protocol, procedure protocol
    Measurements, ///< annotations, spectroscopy, tractography, surfaces
    RawData,
    Video,
    Palette,
    Directory,
    Unknown ///< no pixels, and of a class that nobody knows
};

/// The kind of a SOP class; whatever is not known to hold something else counts as an image.
IMAGEBASE_EXPORT ObjectKind kindOfClass(const QString &sopClassUid);
