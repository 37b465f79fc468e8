#pragma once

#include "correctionrequest.h"

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
    /// What was changed and where, a line each, or what went wrong and what both places hold now.
    static QString report(const CorrectionReport &report, const PatientValues &before);

private:
    static QString shortValue(PatientField field, const QString &value);
    static QString changes(const CorrectionReport &report, const PatientValues &before);
    static QString files(const LocalCorrection &files);
    static QString failure(const CorrectionReport &report);
    static QString indexProblem(const IndexCorrectionResult &result);
};
