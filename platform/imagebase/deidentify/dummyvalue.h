#pragma once

#include <QByteArray>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

/// Values that say nothing and are valid.
namespace DummyValue {

inline constexpr char date[] = "20000101";
inline constexpr char text[] = "REMOVED";

/// One for a kind that is written in characters.
QByteArray textFor(DcmEVR vr);
/// Gives an element one, whatever its kind; false where there is none for that kind.
bool set(DcmElement &element);

/// A date that is some days earlier: DA, or DT with its time; empty where it is no whole date and nothing
/// else.
QByteArray shifted(DcmEVR vr, const QByteArray &value, int daysBack);

/// An empty document of one page, for what is PDF.
QByteArray emptyPdf();

} // namespace DummyValue
