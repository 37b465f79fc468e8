#pragma once

#include "imagebase_export.h"

#include <QString>

/// A DICOM date as people read it: "20151204" becomes "2015-12-04"; what is no date stays as it is.
IMAGEBASE_EXPORT QString dateForDisplay(const QString &dicomDate);
