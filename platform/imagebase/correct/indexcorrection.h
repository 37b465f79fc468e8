#pragma once

#include "imagebase_export.h"
#include "patientvalues.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QStringList>

/// Whose data are corrected in the index.
struct IndexCorrection
{
    enum class Scope : quint8 {
        Patient, ///< the patient with all studies
        Study ///< this study alone: it goes to the patient that the new values name
    };
    qlonglong studyPk = 0;
    QString studyUid; ///< finds the study where the key has changed
    Scope scope = Scope::Patient;
    PatientChanges changes;
};

/// What the index has of a study's patient.
struct IndexedPatient
{
    bool isFound = false;
    qlonglong pk = 0;
    PatientValues values;
    QStringList studyUids; ///< of all the patient's studies, newest first
    int copies = 0; ///< files of the study in the index's own store
    int references = 0; ///< files of the study that lie elsewhere
};

/// What a correction came to.
struct IndexCorrectionResult
{
    enum class Problem : quint8 {
        None,
        NotFound, ///< the study is not in the index any more
        StudyTwice, ///< the patient that the new values name has a study of the same UID already
        Database
    };
    Problem problem = Problem::None;
    QSqlError error;
    bool isMerged = false; ///< the new values are those of a patient that was there before
    qlonglong patientPk = 0;
    int studies = 0; ///< whose patient has the new values now

    bool isGood() const { return problem == Problem::None; }
};

/// The patient of a study; on the thread of the connection.
/// @param error why the index could not say; the patient is none then
IMAGEBASE_EXPORT IndexedPatient indexedPatientOf(
    const QSqlDatabase &db, qlonglong studyPk, const QString &studyUid, QSqlError *error = nullptr);

/// One transaction. Patients that have the same identity then become one; nothing changes where it fails, and
/// the same correction once more changes nothing.
IMAGEBASE_EXPORT IndexCorrectionResult correctIndex(
    const QSqlDatabase &db, const IndexCorrection &correction);
