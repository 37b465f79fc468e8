#pragma once

#include "patientmanager_export.h"

#include <QIcon>

class QPalette;

/**
 * The mark of an upload state, drawn at any size: a ring where nothing is uploaded, an arrow on its way up in
 * between, a filled circle with a tick where all is. Its colours stand out from the base of the palette; in a
 * selected row it has that of the text.
 *
 * @param status as it stands in the `Status` columns
 * @return a null icon for any other text
 */
PATIENTMANAGER_EXPORT QIcon uploadMark(const QString &status, const QPalette &palette);
