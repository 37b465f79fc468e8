#include "dcmtkheaderreader.h"

#include "boundedparse.h"
#include "dcmtklog.h"
#include "dicomuids.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

/// DCMTK asks for a file's elements up to here: behind all that the index wants, before the pixels.
const DcmTagKey afterWanted(0x0033, 0x0000);
/// Where its elements are out of order, all before the pixels are worth a look.
const DcmTagKey pixelData(0x7fe0, 0x0010);
void takeBytes(DcmElement &element, const WantedElement &wanted, HeaderValues &values)
{
    Uint8 *bytes = nullptr;
    if (element.getUint8Array(bytes).bad() || !bytes) {
        return;
    }
    const auto length = static_cast<int>(qMin<Uint32>(element.getLength(), HeaderValues::maximumBytes));
    if (!wanted.binary) {
        values.setText(wanted, reinterpret_cast<const char *>(bytes), length);
    } else if (length >= 2) {
        values.setNumber(wanted, static_cast<quint16>(bytes[0] | (bytes[1] << 8)));
    }
}

/// The element's text as bytes, NULs and all; null where it has none.
const char *textOf(DcmElement &element, int &length)
{
    char *text = nullptr;
    Uint32 size = 0;
    length = 0;
    if (!element.isaString() || element.getString(text, size).bad() || !text) {
        return nullptr;
    }
    length = static_cast<int>(qMin<Uint32>(size, HeaderValues::maximumBytes));
    return text;
}

void takeElement(DcmElement &element, const WantedElement &wanted, HeaderValues &values)
{
    int length = 0;
    Uint16 number = 0;
    OFString printed;
    switch (element.ident()) {
    case EVR_SQ:
        break;
    case EVR_OB:
    case EVR_UN:
    case EVR_UNKNOWN:
    case EVR_UNKNOWN2B:
    case EVR_ox:
        takeBytes(element, wanted, values);
        break;
    case EVR_US:
        if (element.getUint16(number).good()) {
            values.setNumber(wanted, number);
        }
        break;
    default:
        if (const char *text = textOf(element, length)) {
            values.setText(wanted, text, length);
        } else if (!element.isaString() && element.getOFString(printed, 0).good()) {
            values.setText(wanted, printed.data(), static_cast<int>(printed.size()));
        }
    }
}

/// The element where the data set has it whole: of one that is cut, the rest of its bytes would be chance.
DcmElement *find(DcmItem &item, const DcmTagKey &tag)
{
    DcmElement *element = nullptr;
    const bool found = item.findAndGetElement(tag, element).good();
    return found && element->transferState() == ERW_ready ? element : nullptr;
}

void takeCharacterSet(DcmItem &dataSet, HeaderValues &values)
{
    int length = 0;
    if (DcmElement *element = find(dataSet, DCM_SpecificCharacterSet)) {
        if (const char *text = textOf(*element, length)) {
            values.setCharacterSet(text, length);
        }
    }
}

void takeAll(DcmFileFormat &file, HeaderValues &values)
{
    DcmDataset &dataSet = *file.getDataset();
    takeCharacterSet(dataSet, values);
    for (const WantedElement &wanted : wantedElements()) {
        const DcmTagKey tag(static_cast<Uint16>(wanted.tag >> 16), static_cast<Uint16>(wanted.tag & 0xffff));
        DcmItem &item = wanted.attribute == Attribute::TransferSyntaxUID
            ? static_cast<DcmItem &>(*file.getMetaInfo())
            : dataSet;
        if (DcmElement *element = find(item, tag)) {
            takeElement(*element, wanted, values);
        }
    }
    OFString storageClass;
    file.getMetaInfo()->findAndGetOFString(DCM_MediaStorageSOPClassUID, storageClass);
    if (storageClass == DicomUid::mediaDirectory || dataSet.tagExists(DCM_DirectoryRecordSequence)) {
        values.setMediaDirectory();
    }
}

DcmtkVerdict parse(const MemoryFile &bytes, const DcmTagKey &end, HeaderValues &values)
{
    DcmFileFormat file;
    const BoundedParse result = parseBounded(bytes, end, file);
    takeAll(file, values);
    file.transferEnd();
    return {result.complete, file.getDataset()->card() > 0, result.detail};
}

DcmtkVerdict parseEitherWay(const MemoryFile &bytes, HeaderValues &values)
{
    DcmtkVerdict verdict = parse(bytes, afterWanted, values);
    if (values.isIdentified() || values.isMediaDirectory()) {
        return verdict;
    }
    values.begin();
    return parse(bytes, pixelData, values);
}

} // namespace

DcmtkVerdict DcmtkHeaderReader::read(FileWindow &file, HeaderValues &values)
{
    silenceDcmtk();
    const QByteArray bytes = boundedPrefix(file);
    if (bytes.isEmpty()) {
        return {};
    }
    const MemoryFile copy(bytes);
    DcmtkVerdict verdict;
    onStackFor(bytes, [&] { verdict = parseEitherWay(copy, values); });
    return verdict;
}
