#pragma once

/// DCMTK would print each oddity of each file to the terminal; the import report names the file with its
/// reason instead. Quiets the loggers of parsing, decoding and character sets, once, for the whole process.
void silenceDcmtk();
