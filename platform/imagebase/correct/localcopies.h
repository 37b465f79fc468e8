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
};

/// Writes the index's own copies of studies of a patient anew, each in one step: a file is the old one or the
/// new one whenever this ends, and doing it again goes on. Files that were only referenced are left alone. On
/// the thread of the connection, with a stack of correctionStack bytes.
/// @param show told how many of how many
IMAGEBASE_EXPORT LocalCorrection correctCopies(const QSqlDatabase &db, qlonglong patientPk,
    const QStringList &studyUids, const PatientChanges &changes,
    const std::function<void(int done, int all)> &show);
