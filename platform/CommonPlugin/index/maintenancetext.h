#pragma once

#include "indexmaintenance.h"

#include <QMetaType>

Q_DECLARE_METATYPE(MaintenanceResult)

/// How the care of an index ended, in words for people.
namespace MaintenanceText {

QString checked(const MaintenanceResult &result);
QString compacted(const MaintenanceResult &result);
QString backedUp(const MaintenanceResult &result);

} // namespace MaintenanceText
