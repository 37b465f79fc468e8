#pragma once

#include "imagebase_export.h"
#include "patientvalues.h"

#include <QSqlDatabase>
#include <QStringList>

#include <functional>

/// What became of the files of corrected studies on this computer.
struct LocalCorrection
{
    int corrected = 0; ///< copies in the index's store; those that were right already count
    int elsewhere = 0; ///< files of others' folders, which keep their values
    QStringList failed; ///< copies that could not be written anew
    bool isStopped = false; ///< not all were looked at
};

/// Writes the index's own copies of studies of a patient anew, each in one step: a file is the old one or the
/// new one whenever this ends, and doing it again goes on. Files that were only referenced are left alone. On
/// the thread of the connection, with a stack of correctionStack bytes.
/// @param goOn told how many of how many; an answer of false ends it
IMAGEBASE_EXPORT LocalCorrection correctCopies(const QSqlDatabase &db, qlonglong patientPk,
    const QStringList &studyUids, const PatientChanges &changes,
    const std::function<bool(int done, int all)> &goOn);
