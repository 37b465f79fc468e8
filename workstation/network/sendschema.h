#pragma once

class QSqlDatabase;

/// Makes the tables of the jobs where they are not there. @return false where the file is something else, was
/// made by a later version, or cannot be written
bool prepareSendSchema(QSqlDatabase &db);
