#pragma once

#include <QtGlobal>

class DcmItem;

/// Whether names or faces may be seen in the pictures themselves, which nothing here changes.
enum class BurnedIn : quint8 {
    No, ///< the object says so, or it is of a kind that has none
    Possible, ///< of a kind that often has them, and it says nothing
    Declared ///< the object says so
};

/// By what the data set declares, else by its modality and class.
BurnedIn burnedInOf(DcmItem &dataset);
