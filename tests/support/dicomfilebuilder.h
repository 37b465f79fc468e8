#pragma once

#include <QString>

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
