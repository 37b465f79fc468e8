#pragma once

#include "imagebase_export.h"

#include <QString>
#include <QVector>

/// One row of a stored inquiry, as it is stored.
struct InquiryCondition
{
    QString group; ///< record table
    QString field; ///< a column of it
    QString symbol; ///< "=", ">", "<"
    QString value; ///< without quotes; empty asks for records without the field
    QString logic; ///< how it joins the next row of its group: "and", "or"
    QString queryType; ///< "Precise", "Fuzzy"
};

inline bool operator==(const InquiryCondition &a, const InquiryCondition &b)
{
    return a.group == b.group && a.field == b.field && a.symbol == b.symbol && a.value == b.value
        && a.logic == b.logic && a.queryType == b.queryType;
}
inline bool operator!=(const InquiryCondition &a, const InquiryCondition &b)
{
    return !(a == b);
}

/// In row order.
using InquiryConditions = QVector<InquiryCondition>;

/// The words of a stored inquiry.
namespace InquiryWord {
inline constexpr char equal[] = "=";
inline constexpr char greater[] = ">";
inline constexpr char less[] = "<";
inline constexpr char conjunction[] = "and";
inline constexpr char disjunction[] = "or";
inline constexpr char precise[] = "Precise";
inline constexpr char fuzzy[] = "Fuzzy";
} // namespace InquiryWord
