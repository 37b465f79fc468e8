#pragma once

#include "attributes.h"

#include <QString>

/// What the index keeps of one DICOM file: a text for each attribute, null where the file does not have it.
/// Texts are Unicode, without padding. A person name holds its groups and components as they came, less
/// trailing blanks and empty trailing groups and components. A number is decimal text that converts.
class DicomHeader
{
public:
    const QString &operator[](Attribute attribute) const { return m_values[index(attribute)]; }
    QString &operator[](Attribute attribute) { return m_values[index(attribute)]; }

private:
    static std::size_t index(Attribute attribute) { return static_cast<std::size_t>(attribute); }

    std::array<QString, attributeCount> m_values;
};
