#pragma once

#include "columnkind.h"

#include <QString>
#include <QVariant>

/// The stored value as people read it; a value that is not what its kind says is shown as it is.
QString columnText(ColumnKind kind, const QVariant &value);
