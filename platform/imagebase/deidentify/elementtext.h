#pragma once

#include <QByteArray>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

/// Small questions about the elements of a data set. All are for the thread that has the data set.
namespace ElementText {

/// Values that are longer are never loaded.
inline constexpr quint32 longest = 1024 * 1024;

inline quint32 tagOf(const DcmObject &object)
{
    return (quint32(object.getGTag()) << 16) | object.getETag();
}

/// The text of an element as the file has it, without padding; empty where it has none, or far too much.
QByteArray of(DcmElement &element);
/// The text of an attribute of a data set; empty where it is missing.
QByteArray of(DcmItem &item, const DcmTagKey &tag);

/// The VR that the standard gives a tag; EVR_UNKNOWN where it is not known.
DcmEVR standardVr(const DcmTagKey &tag);

bool isText(DcmEVR vr); ///< what people write: LO, SH, LT, ST, UT, UC
bool isString(DcmEVR vr); ///< anything that is written in characters
bool isUnknown(DcmEVR vr); ///< bytes that nobody says the meaning of

} // namespace ElementText
