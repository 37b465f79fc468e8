#pragma once

#include "attributechange.h"
#include "burnedin.h"
#include "deidentifyoptions.h"
#include "imagebase_export.h"
#include "pseudonyms.h"

#include <QByteArray>
#include <QSet>
#include <QVector>

#include <atomic>

/// Why a file has not become anonymous.
enum class DeidentifyProblem : quint8 {
    None,
    CannotRead,
    NotDicom,
    NotAnObject, ///< a directory, or nothing that belongs to a patient's study
    Damaged, ///< cannot be read to its end, so nobody knows what it holds
    TooSlow, ///< was not read in two minutes
    TooLarge, ///< a packed data set, or lists, beyond all measure
    CannotWrite,
    DiskFull,
    NoDictionary, ///< DCMTK's data dictionary is missing: no attribute would be known
    Cancelled
};

/// What became of one file.
struct DeidentifiedFile
{
    DeidentifyProblem problem = DeidentifyProblem::None;
    QString detail; ///< the system's or the parser's words; never a value of the file
    BurnedIn burnedIn = BurnedIn::No;
    bool hadDocument = false; ///< an embedded document was replaced by an empty one
    QString patientName; ///< as it is now
    QString patientId;
    QByteArray studyUid;
    QByteArray seriesUid;
    QByteArray sopInstance;
    QString modality;
    QVector<AttributeChange> changes; ///< of preview()
    QByteArray number; ///< the patient's as it was, with who gave it: a secret; empty where there was none
    QString person; ///< whom it belonged to: name and birth date with a backslash between, as they were
};

/**
 * Writes a copy of a DICOM file that does not say whose it is, by the Basic Profile of the standard.
 *
 * Everything before the pixels is parsed and cleaned; the pixels are copied as they are, never held, but
 * without overlays in bits that no sample uses, comments of compressed pictures, and bytes behind the last.
 * Whatever stands behind them, between the elements of their group, or before the data set is left out. Input
 * is hostile; what cannot be understood to its end is refused. Any thread; run() works on a thread of its own
 * with a stack for nested data, and waits for it.
 */
class IMAGEBASE_EXPORT Deidentifier
{
public:
    /// @param shared numbers that several patients have: those are told apart by name and birth date, too
    Deidentifier(DeidentifyOptions options, Pseudonyms pseudonyms, QSet<QByteArray> shared = {});

    /// @param path a file, in the system's bytes
    /// @param target a name that is free; nothing is left there where there is a problem
    DeidentifiedFile run(
        const QByteArray &path, const QByteArray &target, const std::atomic<bool> &cancelled) const;
    /// What run() would change, without writing anything.
    DeidentifiedFile preview(const QByteArray &path, const std::atomic<bool> &cancelled) const;

private:
    DeidentifyOptions m_options;
    Pseudonyms m_pseudonyms;
    QSet<QByteArray> m_shared;
};
