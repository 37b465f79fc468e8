#pragma once

/// What sets one record form apart from the others; constant, one for each form.
struct RecordTable
{
    const char *name; ///< the record table, also its name in selections and in the captions file
    const char *fieldTable; ///< its field configuration
    const char *startFilter; ///< %1 is today's date
    const char *parentFilter; ///< %1 is the parent's key; null at the top
    int sortColumn; ///< where the sort indicator stands at first
};
