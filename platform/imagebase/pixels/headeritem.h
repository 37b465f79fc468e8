#pragma once

class DcmItem;
class DcmTagKey;

/// Values out of an item of a header that DCMTK has parsed: what is malformed counts as not there.
namespace HeaderItem {

/// Whatever the element's representation says.
int wholeNumber(DcmItem &item, const DcmTagKey &tag, int otherwise);
/// One of several decimal numbers; false where it is none.
bool decimal(DcmItem &item, const DcmTagKey &tag, unsigned long position, double &value);
/// The first item of a sequence, or the item itself where the sequence is not there.
DcmItem &within(DcmItem &item, const DcmTagKey &sequence);

} // namespace HeaderItem
