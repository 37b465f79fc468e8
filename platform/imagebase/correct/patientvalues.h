#pragma once

#include "imagebase_export.h"

#include <QHash>
#include <QMap>
#include <QString>

#include <array>

/// What can be corrected of a patient.
enum class PatientField : quint8 { Name, Id, BirthDate, Sex, Comments };

inline uint qHash(PatientField field, uint seed = 0)
{
    return ::qHash(static_cast<uint>(field), seed);
}

/// Values to be given, each by its field; the others stay.
using PatientChanges = QMap<PatientField, QString>;

/// A patient's data as DICOM writes them: a name with its components and groups, a date of eight digits.
class IMAGEBASE_EXPORT PatientValues
{
public:
    static constexpr std::array<PatientField, 5> fields{PatientField::Name, PatientField::Id,
        PatientField::BirthDate, PatientField::Sex, PatientField::Comments};

    const QString &operator[](PatientField field) const { return m_values[static_cast<std::size_t>(field)]; }
    QString &operator[](PatientField field) { return m_values[static_cast<std::size_t>(field)]; }

    /// What has to be changed for these to become the others.
    PatientChanges changesTo(const PatientValues &others) const;

    /// The column of the table of patients, which is the attribute's keyword as well.
    static QString column(PatientField field);
    /// Group in the high 16 bits.
    static quint32 tag(PatientField field);
    /// Whether two values of a field are the same to DICOM: blanks around it, and what a name leaves empty at
    /// its end, do not matter.
    static bool isSame(PatientField field, const QString &one, const QString &other);

private:
    std::array<QString, fields.size()> m_values;
};
