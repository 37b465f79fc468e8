#pragma once

#include "exportrequest.h"
#include "uniquenames.h"

#include <QHash>

#include <memory>

/// What a layout knows of an image and of what it belongs to.
struct ExportRow
{
    qlonglong patient = 0;
    qlonglong study = 0;
    qlonglong series = 0;
    QString patientName; ///< as people read it
    QString patientId;
    QString studyDate;
    QString studyDescription;
    QString modalities; ///< of the study
    QString seriesNumber;
    QString modality;
    QString seriesDescription;
    QString instanceNumber;
    QString filePath;
};

/// Gives each file of an export its name below the target. One thread; images come one after another, those
/// of a series together.
class ExportLayout
{
public:
    static std::unique_ptr<ExportLayout> make(const ExportRequest &request);
    virtual ~ExportLayout() = default;

    virtual QString nameFor(const ExportRow &row) = 0;
};
