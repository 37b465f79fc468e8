#pragma once

#include <QString>

class QPatientTreeItem;

/// What tells a study or a series from its neighbours, on one line; empty for other items.
QString recordSummary(const QPatientTreeItem &item);
