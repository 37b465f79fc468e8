#pragma once

#include "inquirycondition.h"

#include <QStringList>

/**
 * The table of stored inquiries on the default connection, with the exact statements that ask and write it.
 *
 * Names are put into the statements as they stand; one with a quote makes a statement fail, quietly. Only a
 * deletion is kept from running then, since it could reach another inquiry. A change takes the write lock
 * once and waits for it only a moment; where a transaction is open already, it is a part of that one. No
 * statement stays open. GUI thread.
 */
namespace InquiryTable {

/// Columns of "SELECT *", by position.
enum Column { Key, UserName, InquiryName, GroupName, FieldName, Symbol, FieldValue, Logic, QueryType };

/// What became of a change.
enum class Outcome : quint8 {
    Done,
    Incomplete, ///< a statement failed, the others were kept
    Refused ///< the index could not be written just now: all is as it was
};

/// Each name once, sorted by the order of their characters, so that every start lists them alike.
QStringList names();

/// The statement for all conditions of an inquiry, group by group.
QString allOf(const QString &name);

/// The conditions of one group of an inquiry, as they are stored.
InquiryConditions conditions(const QString &name, const QString &group);

/// Whether there is an inquiry of this name; false also where the question fails.
bool isTaken(const QString &name);

/// Puts the conditions in the place of what the inquiry holds, in one transaction. Where the deletion fails
/// they stand beside the old ones.
Outcome replace(const QString &name, const InquiryConditions &conditions);

/// Adds conditions to an inquiry, which thereby comes to be. Those without a field are left out.
Outcome append(const QString &name, const InquiryConditions &conditions);

/// Removes an inquiry.
Outcome remove(const QString &name);

} // namespace InquiryTable
