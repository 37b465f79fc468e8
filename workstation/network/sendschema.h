#pragma once

class QSqlDatabase;
class QString;

/// Makes the tables of the jobs where they are not there. @return false where the file is something else, was
/// made by a later version, or cannot be written
bool prepareSendSchema(QSqlDatabase &db);

/// Writes what is there already: shows whether the file can be written. For a transaction.
bool touchSendSchema(const QSqlDatabase &db);

/// A statement that names states and holds ("$waiting", "$cancelled") with their numbers in place of the
/// names.
QString withSendNumbers(QString sql);
