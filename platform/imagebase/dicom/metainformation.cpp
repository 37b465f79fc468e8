#include "metainformation.h"

#include "dicomreader.h"
#include "elementcursor.h"
#include "headerscanner.h"

namespace {

constexpr quint32 metaGroup = 0x0002;
constexpr quint32 mediaClassTag = 0x00020002;
constexpr quint32 mediaInstanceTag = 0x00020003;
constexpr quint32 syntaxTag = 0x00020010;
constexpr quint32 longestUid = 64;
constexpr qint64 markLength = 4;

} // namespace

QByteArray uidAt(FileWindow &file, const ElementPlace &element)
{
    const uchar *bytes = element.length <= longestUid ? file.at(element.value, element.length) : nullptr;
    QByteArray uid(reinterpret_cast<const char *>(bytes), bytes ? static_cast<int>(element.length) : 0);
    while (uid.endsWith('\0') || uid.endsWith(' ')) {
        uid.chop(1);
    }
    return DicomReader::isUid(QString::fromLatin1(uid)) ? uid : QByteArray();
}

MetaInformation readMetaInformation(FileWindow &file)
{
    MetaInformation meta;
    if (!HeaderScanner::hasMark(file)) {
        return meta;
    }
    ElementCursor cursor(file, HeaderScanner::markOffset + markLength, ElementCursor::Encoding::Meta);
    ElementPlace element;
    while (cursor.peek(element) && element.tag >> 16U == metaGroup) {
        if (element.tag == mediaClassTag) {
            meta.sopClass = uidAt(file, element);
        } else if (element.tag == mediaInstanceTag) {
            meta.sopInstance = uidAt(file, element);
        } else if (element.tag == syntaxTag) {
            meta.transferSyntax = uidAt(file, element);
        }
        if (!cursor.skip(element)) {
            return meta;
        }
        meta.end = cursor.position();
    }
    return meta;
}
