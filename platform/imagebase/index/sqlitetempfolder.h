#pragma once

#include <QString>

/// Where SQLite puts the temporary files of this process, by the rules that it documents; the working
/// directory where none of its folders can be written.
QString sqliteTempFolder();
