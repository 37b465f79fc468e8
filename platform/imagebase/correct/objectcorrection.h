#pragma once

#include "imagebase_export.h"
#include "patientvalues.h"

#include <QString>

/// Whether an object could be written with other values, or why not.
struct ObjectCorrection
{
    enum class Problem : quint8 { None, Unreadable, Unwritable };
    Problem problem = Problem::None;
    QString detail; ///< the parser's or the system's own words
};

/**
 * Writes a copy of a DICOM file with other values of its patient: same UIDs, same transfer syntax, pixels
 * untouched. What the values were before is kept in it as DICOM asks for (Original Attributes Sequence).
 *
 * A value that the file's character set cannot hold turns all texts of the data set into UTF-8; texts of
 * unknown encoding (private ones without a value representation) stay as they are. Memory stays small: long
 * values are copied from file to file. Any thread with a stack for the nesting of a hostile file; see
 * correctionStack.
 * @param target is replaced
 */
IMAGEBASE_EXPORT ObjectCorrection correctObject(
    const QString &source, const QString &target, const PatientChanges &changes);

/// Bytes of stack that a thread should have which corrects objects of others.
inline constexpr uint correctionStack = 256U * 1024 * 1024;
