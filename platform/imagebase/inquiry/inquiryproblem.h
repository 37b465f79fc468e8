#pragma once

#include <QString>

/// Why an inquiry found nothing without having been asked of the records.
struct InquiryProblem
{
    enum class Kind {
        None,
        NotStored, ///< text: the inquiry's name
        NoCondition, ///< the inquiry has rows, but none names a field
        UnknownGroup, ///< text: the group
        UnknownField, ///< text: the field
        UnknownSymbol, ///< text: the symbol
        UnknownLogic, ///< text: the logic
        UnknownQueryType, ///< text: the query type
        NotANumber, ///< text: the value, of a field that holds numbers
        NotADate, ///< text: the value, of a field that holds dates or times
        Database ///< text: the database's words
    };

    Kind kind = Kind::None;
    QString field; ///< of the condition, where it is about one
    QString text;

    explicit operator bool() const { return kind != Kind::None; }
};
