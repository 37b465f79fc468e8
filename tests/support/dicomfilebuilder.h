#pragma once

#include <QStringList>

#include <map>

/**
 * Writes small valid DICOM files for tests: a value object, set what matters, write.
 * Everything unset has a sensible default (a CT slice of 4x4 pixels, UTF-8).
 */
class DicomFileBuilder
{
public:
    DicomFileBuilder();

    /// Sets a data set element by its tag (group in the high 16 bits); an empty value writes it empty.
    DicomFileBuilder &set(quint32 tag, const QString &value);
    /// Leaves an element out.
    DicomFileBuilder &without(quint32 tag);
    DicomFileBuilder &patient(const QString &id, const QString &name);
    DicomFileBuilder &uids(const QString &study, const QString &series, const QString &instance);
    DicomFileBuilder &instanceNumber(int number);

    /// Writes as explicit little endian; makes the folder. Fails the program where that is impossible.
    void write(const QString &path) const;

private:
    std::map<quint32, QString> m_values;
};

/// Writes images of one series, "1.2.3.4.1" and so on. @return their paths, N.dcm
QStringList writeSeries(const QString &folder, int images);
/// Writes an image of each of so many patients, who are called Import^0 and so on.
void writePatients(const QString &folder, int patients);
