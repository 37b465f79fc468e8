#pragma once

#include "headervalues.h"

class FileWindow;

/// What DCMTK made of a file.
struct DcmtkVerdict
{
    bool complete = false; ///< read up to where the header ends, without an error
    bool anyElement = false; ///< at least one element of the data set was understood
    QString detail; ///< DCMTK's words on what is wrong
};

/**
 * Reads the header of files that the fast scanner does not understand, by DCMTK: bare data sets, big endian,
 * odd and damaged ones; what stands before the damage counts. DCMTK never sees more than the file's first
 * megabytes and runs with a stack deep enough for them, as it recurses at every nested item.
 */
class DcmtkHeaderReader
{
public:
    static DcmtkVerdict read(FileWindow &file, HeaderValues &values);
};
