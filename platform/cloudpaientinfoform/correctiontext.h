#pragma once

#include "correctionwork.h"

#include <QCoreApplication>

/// The sentences about corrections.
class CorrectionText
{
    Q_DECLARE_TR_FUNCTIONS(CorrectionText)

public:
    static QString field(PatientField field);
    /// A value as people read it; a dash where it is empty.
    static QString value(PatientField field, const QString &value);
    static QString step(const CorrectionProgress &progress);
    /// What becomes of the files that the index has of a study; empty where it has none.
    static QString filesOf(const IndexedPatient &patient);
    static QString indexProblem(const IndexCorrectionResult &result);
    /// What was changed and where, a line each, or what went wrong and what both places hold now.
    /// @param before as it was read before the correction
    static QString report(const CorrectionReport &report, const StudyFacts &before);
    /// What became of those that were cut short earlier.
    static QString earlier(const QVector<CorrectionReport> &reports);

private:
    static QString shortValue(PatientField field, const QString &value);
    static QString change(const CorrectionReport &report, PatientField field, const StudyFacts &before);
    static QString changes(const CorrectionReport &report, const StudyFacts &before);
    static QString earlier(const CorrectionReport &report);
    static QString files(const LocalCorrection &files);
    static QString failure(const CorrectionReport &report);
};
