#pragma once

#include <QtGlobal>

class DcmItem;

/// Whether the pictures themselves may show or hold names or faces, which nothing here changes.
enum class BurnedIn : quint8 {
    No, ///< the object says so, or it is of a kind that has none
    Possible, ///< of a kind that often has them, and it says nothing
    Declared, ///< the object says so
    HiddenOverlay, ///< bits of the samples are drawings or texts, and cannot be told from the picture
    Unread ///< packed in a way that may hold texts beside the picture, which are not found
};

/// By what the data set declares, else by its modality and class.
BurnedIn burnedInOf(DcmItem &dataset);
