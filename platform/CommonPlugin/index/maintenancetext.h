#pragma once

#include "commonplugin_export.h"
#include "indexmaintenance.h"

#include <QMetaType>

class QSqlError;

Q_DECLARE_METATYPE(MaintenanceResult)

/// How the care of an index ended, or kept others waiting, in words for people.
namespace MaintenanceText {

QString checked(const MaintenanceResult &result);
QString compacted(const MaintenanceResult &result);
QString backedUp(const MaintenanceResult &result);
/// Why the index did not take an edit: the database's own words, or that it is being compacted.
COMMONPLUGIN_EXPORT QString refused(const QSqlError &error);

} // namespace MaintenanceText
