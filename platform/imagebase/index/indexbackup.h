#pragma once

#include "indexmaintenance.h"

class IndexWorkplace;

/// The copy that IndexMaintenance::backUp() makes, on its connection.
MaintenanceResult backUpIndex(const IndexWorkplace &place, const QString &target,
    const std::atomic<bool> &stop, const IndexMaintenance::Progress &progress);
