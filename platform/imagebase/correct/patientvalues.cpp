#include "patientvalues.h"

#include "personname.h"

namespace {

struct FieldInfo
{
    const char *column;
    quint32 tag;
};

const FieldInfo &infoOf(PatientField field)
{
    static constexpr std::array<FieldInfo, PatientValues::fields.size()> infos{{
        {"PatientName", 0x00100010},
        {"PatientID", 0x00100020},
        {"PatientBirthDate", 0x00100030},
        {"PatientSex", 0x00100040},
        {"PatientComments", 0x00104000},
    }};
    return infos[static_cast<std::size_t>(field)];
}

QString tidied(PatientField field, const QString &value)
{
    if (field == PatientField::Name) {
        return tidyPersonName(value);
    }
    QString text = value;
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n")).trimmed();
}

} // namespace

PatientChanges PatientValues::changesTo(const PatientValues &others) const
{
    PatientChanges changes;
    for (const PatientField field : fields) {
        if (!isSame(field, (*this)[field], others[field])) {
            changes.insert(field, others[field]);
        }
    }
    return changes;
}

QString PatientValues::column(PatientField field)
{
    return QLatin1String(infoOf(field).column);
}

quint32 PatientValues::tag(PatientField field)
{
    return infoOf(field).tag;
}

bool PatientValues::isSame(PatientField field, const QString &one, const QString &other)
{
    return tidied(field, one) == tidied(field, other);
}
