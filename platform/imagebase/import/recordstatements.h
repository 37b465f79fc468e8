#pragma once

#include "attributes.h"

#include <QString>

#include <vector>

/// The statements that enter records, written out of the table of attributes. Their places stand in this
/// order: the parent's key, the attributes of the level, and for an image its file.
namespace RecordStatements {

/// The attributes that a level keeps, in the order of their places.
std::vector<AttributeInfo> attributesOf(RecordLevel level);
QString insert(RecordLevel level);
/// Ends with the key of the image.
QString updateImage();

} // namespace RecordStatements
