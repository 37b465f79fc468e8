#pragma once

#include "queryrecord.h"

#include <QByteArray>

#include <memory>

class CharacterSet;
class DcmDataset;

/// The data sets of queries and retrievals: records to and from DICOM.
namespace QueryIdentifier {

/// The longest answer that is taken from a peer, and of each value as much.
inline constexpr qint64 longestAnswer = qint64(1024) * 1024;
inline constexpr int longestValue = 64 * 1024;

/// A data set of the keys, in UTF-8.
std::unique_ptr<DcmDataset> encode(const QueryRecord &keys);
/// What of the attributes in QueryTag stands in a data set as it came; ends at the first thing that is not
/// plain.
QueryRecord decode(const QByteArray &bytes, bool isImplicit, CharacterSet &characterSet);

} // namespace QueryIdentifier
