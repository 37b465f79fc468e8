#pragma once

/// The UIDs of the standard that reading a header has to know.
namespace DicomUid {
inline constexpr char root[] = "1.2.840.10008.";
/// Of the classes of images and other objects of a study.
inline constexpr char storageRoot[] = "1.2.840.10008.5.1.4.1.1.";
inline constexpr char transferSyntaxRoot[] = "1.2.840.10008.1.2.";
inline constexpr char implicitLittleEndian[] = "1.2.840.10008.1.2";
inline constexpr char explicitLittleEndian[] = "1.2.840.10008.1.2.1";
inline constexpr char deflated[] = "1.2.840.10008.1.2.1.99";
inline constexpr char bigEndian[] = "1.2.840.10008.1.2.2";
inline constexpr char referencedDeflated[] = "1.2.840.10008.1.2.4.95";
inline constexpr char mediaDirectory[] = "1.2.840.10008.1.3.10";
} // namespace DicomUid
