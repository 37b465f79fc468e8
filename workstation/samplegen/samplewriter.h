#pragma once

#include "renderer.h"
#include "sampleseries.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

/// Where in the set a file stands; the UIDs are made of these numbers.
struct SamplePosition
{
    int patient = 0;
    int study = 0;
    int series = 0;
    int slice = 0;
};

/// Writes one image of the sample set as a DICOM file. Made anew for each file.
class SampleWriter
{
public:
    SampleWriter(const SamplePatient &patient, const SampleStudy &study, const SampleSeries &series,
        SamplePosition position);

    /// @return an empty text, or why the file could not be written
    QString write(const QString &path);

private:
    void putPatient();
    void putStudy();
    void putSeries();
    void putEquipment();
    void putGeometry();
    void putPixels(const SampleImage &image);
    void putText(const DcmTagKey &tag, const QString &text);
    void putName(const DcmTagKey &tag, const QString &name);
    void putCode(const DcmTagKey &tag, const QString &code);
    void putNumbers(const DcmTagKey &tag, std::initializer_list<float> numbers);
    QByteArray encoded(const QString &text) const;
    QString uid(int depth) const;

    const SamplePatient &m_patient;
    const SampleStudy &m_study;
    const SampleSeries &m_series;
    const SamplePosition m_position;
    DcmFileFormat m_file;
};
