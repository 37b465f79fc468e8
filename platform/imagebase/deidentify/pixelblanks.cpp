#include "pixelblanks.h"

#include "codestreamtexts.h"
#include "dicomuids.h"
#include "elementtext.h"
#include "transfersyntax.h"

#include <algorithm>

namespace {

constexpr quint32 integerPixels = 0x7fe00010;

quint64 countOf(DcmItem &dataset, const DcmTagKey &tag)
{
    Uint16 number = 0;
    dataset.findAndGetUint16(tag, number);
    return number;
}

/// The bits of samples that overlays stand in.
quint32 overlayBits(DcmItem &dataset)
{
    constexpr quint16 firstGroup = 0x6000;
    constexpr quint16 lastGroup = 0x60fe;
    constexpr quint16 bitPosition = 0x0102;
    constexpr quint16 data = 0x3000;
    quint32 bits = 0;
    for (quint32 group = firstGroup; group <= lastGroup; group += 2) {
        const quint64 position = countOf(dataset, DcmTagKey(Uint16(group), bitPosition));
        if (position < 32 && dataset.tagExists(DcmTagKey(Uint16(group), bitPosition))
            && !dataset.tagExists(DcmTagKey(Uint16(group), data))) {
            bits |= 1U << position;
        }
    }
    return bits;
}

/// The values of all fragments but the first, which is a table of offsets.
QVector<PixelBytes::Range> fragmentsOf(FileWindow &file, const PixelBytes::Range &pixels)
{
    constexpr qint64 header = 8;
    QVector<PixelBytes::Range> fragments;
    qint64 place = pixels.value;
    while (place + header <= pixels.offset + pixels.length) {
        const uchar *bytes = file.at(place, header);
        const qint64 length =
            bytes ? qint64(bytes[4]) | bytes[5] << 8 | bytes[6] << 16 | qint64(bytes[7]) << 24 : 0;
        if (!bytes || bytes[2] == 0xdd) {
            break;
        }
        PixelBytes::Range fragment;
        fragment.offset = place + header;
        fragment.length = length;
        fragments.append(fragment);
        place += header + length;
    }
    return fragments.mid(1);
}

} // namespace

void PixelBlanks::find(DcmItem &dataset, FileWindow &file, const PixelBytes &pixels, ElementEncoding encoding,
    const QByteArray &transferSyntax)
{
    for (const PixelBytes::Range &range : pixels.ranges) {
        if (range.tag != integerPixels) {
            continue;
        }
        findOverlays(dataset, range, pixels.isEncapsulated, encoding.isBigEndian);
        if (pixels.isEncapsulated) {
            findTexts(file, range, transferSyntax);
        } else {
            findSlack(dataset, range);
        }
    }
}

/// Bits that no sample uses can be emptied; where they cannot be reached, somebody has to know.
void PixelBlanks::findOverlays(DcmItem &dataset, const PixelBytes::Range &range, bool isPacked, bool isBig)
{
    const quint64 allocated = countOf(dataset, DCM_BitsAllocated);
    const quint64 stored = countOf(dataset, DCM_BitsStored);
    const quint64 high = countOf(dataset, DCM_HighBit);
    const quint32 overlays = overlayBits(dataset);
    if (overlays == 0) {
        return;
    }
    const quint64 samples = stored < 32 && high + 1 >= stored && high < 32
        ? ((quint64(1) << stored) - 1) << (high + 1 - stored)
        : ~quint64(0);
    const bool isPlain = !isPacked && (allocated == 8 || allocated == 16);
    if (!isPlain || (overlays & samples) != 0) {
        m_doubt = BurnedIn::HiddenOverlay;
    }
    if (isPlain) {
        const quint32 kept = ~(overlays & ~quint32(samples));
        m_mask = allocated == 8 ? QByteArray(1, char(kept))
            : isBig             ? QByteArray(1, char(kept >> 8)) + char(kept)
                                : QByteArray(1, char(kept)) + char(kept >> 8);
        m_masked.offset = range.value;
        m_masked.length = range.offset + range.length - range.value;
    }
}

/// Bytes behind the last picture.
void PixelBlanks::findSlack(DcmItem &dataset, const PixelBytes::Range &range)
{
    bool isNumber = false;
    const quint64 told = ElementText::of(dataset, DCM_NumberOfFrames).trimmed().toUInt(&isNumber);
    const quint64 frames = isNumber && told > 0 ? told : 1;
    const quint64 samples = qMax(quint64(1), countOf(dataset, DCM_SamplesPerPixel));
    const quint64 pixels = countOf(dataset, DCM_Rows) * countOf(dataset, DCM_Columns); // 32 bits at most
    const quint64 bits = samples * countOf(dataset, DCM_BitsAllocated); // as many
    const auto length = quint64(range.offset + range.length - range.value);
    const double roughly = double(pixels) * double(bits) * double(frames) / 8; // the product may be any
    if (pixels == 0 || bits == 0 || roughly >= double(length)) {
        return;
    }
    const quint64 used = (pixels * bits * frames + 7) / 8;
    PixelBytes::Range slack;
    slack.offset = range.value + qint64((used + 1) / 2 * 2);
    slack.length = range.offset + range.length - slack.offset;
    if (slack.length <= 0) {
        return;
    }
    m_ranges.append(slack);
}

void PixelBlanks::findTexts(
    FileWindow &file, const PixelBytes::Range &range, const QByteArray &transferSyntax)
{
    using TransferSyntax::Packing;
    const Packing packing = TransferSyntax::packingOf(transferSyntax);
    if (packing == Packing::Deflated || transferSyntax == TransferSyntax::rle) {
        return;
    }
    CodestreamTexts texts;
    texts.isUnderstood = false;
    if (packing == Packing::Dcmtk || packing == Packing::Jpeg2000) {
        texts = findCodestreamTexts(file, fragmentsOf(file, range));
    }
    m_ranges += texts.ranges;
    if (!texts.isUnderstood) {
        m_doubt = BurnedIn::Unread;
    }
}

void PixelBlanks::apply(QByteArray &bytes, qint64 offset)
{
    const qint64 end = offset + bytes.size();
    while (m_next < m_ranges.size() && m_ranges.at(m_next).offset < end) {
        const PixelBytes::Range &range = m_ranges.at(m_next);
        const qint64 first = qMax(range.offset, offset);
        const qint64 last = qMin(range.offset + range.length, end);
        std::fill(bytes.begin() + int(first - offset), bytes.begin() + int(qMax(first, last) - offset), '\0');
        if (range.offset + range.length > end) {
            break;
        }
        ++m_next;
    }
    const qint64 last = qMin(m_masked.offset + m_masked.length, end);
    for (qint64 place = qMax(m_masked.offset, offset); !m_mask.isEmpty() && place < last; ++place) {
        bytes[int(place - offset)] =
            char(bytes.at(int(place - offset)) & m_mask.at(int((place - m_masked.offset) % m_mask.size())));
    }
}
