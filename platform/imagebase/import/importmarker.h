#pragma once

/// Stands in imageformat.IrradiationEventUID of a file that was copied into the store, rather than
/// referenced.
inline constexpr char copiedFileMarker[] = "copy";
