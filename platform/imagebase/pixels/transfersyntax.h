#pragma once

#include <QByteArrayList>

/// How the pixels of a transfer syntax are packed.
namespace TransferSyntax {

inline constexpr char rle[] = "1.2.840.10008.1.2.5";
inline constexpr char deflatedFrames[] = "1.2.840.10008.1.2.8.1";

enum class Packing : quint8 { Native, Dcmtk, Jpeg2000, Deflated, Video, Unknown };

inline Packing packingOf(const QByteArray &uid)
{
    constexpr char root[] = "1.2.840.10008.1.2";
    if (uid.isEmpty() || uid == root || uid.startsWith(QByteArray(root) + ".1")
        || uid == QByteArray(root) + ".2") {
        return Packing::Native;
    }
    if (uid == deflatedFrames) {
        return Packing::Deflated;
    }
    if (uid == rle) {
        return Packing::Dcmtk;
    }
    const QByteArray jpegFamily = QByteArray(root) + ".4.";
    if (!uid.startsWith(jpegFamily)) {
        return Packing::Unknown;
    }
    const int number = uid.mid(jpegFamily.size()).split('.').first().toInt(); // videos may have a part more
    if (number >= 100 && number <= 108) {
        return Packing::Video;
    }
    if (number >= 50 && number <= 81) {
        return Packing::Dcmtk;
    }
    const bool isJpeg2000 = (number >= 90 && number <= 93) || (number >= 201 && number <= 203);
    return isJpeg2000 ? Packing::Jpeg2000 : Packing::Unknown;
}

} // namespace TransferSyntax
