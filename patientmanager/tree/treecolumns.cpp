#include "treecolumns.h"

#include "qpatient.h"
#include "qseries.h"
#include "qstudy.h"

#include <array>

namespace {

const QMetaObject *recordClass(int section)
{
    static const std::array<const QMetaObject *, 3> classes{
        &QPatient::staticMetaObject, &QStudy::staticMetaObject, &QSeries::staticMetaObject};
    return section >= 0 && section < int(classes.size()) ? classes[std::size_t(section)] : nullptr;
}

QMetaProperty propertyOf(const QMetaObject *meta, const QString &name)
{
    return meta ? meta->property(meta->indexOfProperty(name.toUtf8())) : QMetaProperty();
}

} // namespace

TreeColumns::TreeColumns(const QStringList &names)
    : m_names(names)
{
    int section = -1;
    m_sections.reserve(names.size());
    m_properties.reserve(names.size());
    for (const QString &name : names) {
        section += name == QLatin1String("pk") ? 1 : 0;
        m_sections.append(section);
        m_properties.append(propertyOf(recordClass(section), name));
    }
}

QVariant TreeColumns::value(int column, RecordLevel level, const QObject &record) const
{
    if (!isOf(column, level)) {
        return QVariant(QString::fromLatin1(""));
    }
    const QMetaProperty &property = m_properties.at(column);
    return property.isValid() ? property.read(&record) : record.property(m_names.at(column).toUtf8());
}
