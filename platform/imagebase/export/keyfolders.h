#pragma once

#include "attributes.h"
#include "imagebase_export.h"

#include <QString>

/// The folders of an export that are named by the keys of the records: "Pa7", and "St12" and "Se31" below it.
namespace KeyFolders {

/// The folder of a patient, a study or a series.
IMAGEBASE_EXPORT QString name(RecordLevel level, qlonglong key);

/// The folder that stands for the upper levels where the records of an export begin below the patients:
/// "Pa0" for studies, "St0" for series, "Se0" for images; empty for patients, which need none. Where the
/// destination has it already it is "pa_0", "St_0", "Se_0", whether or not that is there, too.
/// @param level of the records that are exported
IMAGEBASE_EXPORT QString holder(RecordLevel level, const QString &destination);

/// The name of a file in them: the last part of a stored path, whichever system has written it.
IMAGEBASE_EXPORT QString fileName(const QString &path);

} // namespace KeyFolders
