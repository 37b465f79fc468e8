#pragma once

class DcmElement;
class DcmItem;

namespace UnknownElement {

/// An element whose kind the file does not tell, as the kind that the standard gives its tag.
/// Takes its place in the item. @return it, or the element as it was
DcmElement *understood(DcmItem &item, DcmElement *element);

} // namespace UnknownElement
