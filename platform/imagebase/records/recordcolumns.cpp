#include "recordcolumns.h"

#define PM_COLUMN_NAME(name) QStringLiteral(#name),

const QStringList &recordColumns(RecordLevel level)
{
    static const std::array<QStringList, 4> names{{
        {PM_PATIENT_COLUMNS(PM_COLUMN_NAME)},
        {PM_STUDY_COLUMNS(PM_COLUMN_NAME)},
        {PM_SERIES_COLUMNS(PM_COLUMN_NAME)},
        {PM_INSTANCE_COLUMNS(PM_COLUMN_NAME)},
    }};
    return names[std::size_t(level)];
}
