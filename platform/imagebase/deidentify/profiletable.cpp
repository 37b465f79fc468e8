#include "profiletable.h"

#include <QFile>

static void keepResource()
{
    Q_INIT_RESOURCE(imagebase);
}

namespace {

constexpr quint32 groupFamily = 0xff000000;
constexpr quint32 curves = 0x50000000;

char letter(const QByteArray &column)
{
    return column == "-" ? '\0' : column.at(0);
}

} // namespace

ProfileTable::ProfileTable()
{
    enum Column { Tag, Profile, Dates, Descriptors, Patient, Name, ColumnCount };
    keepResource();
    QFile file(QStringLiteral(":/imagebase/deidentify/profile.tsv"));
    file.open(QIODevice::ReadOnly);
    while (!file.atEnd()) {
        const QList<QByteArray> columns = file.readLine().trimmed().split('\t');
        bool isTag = false;
        const quint32 tag = QByteArray(columns.first()).replace('x', '0').toUInt(&isTag, 16);
        if (isTag && columns.size() == ColumnCount) {
            m_rules.insert(tag,
                {columns[Profile], letter(columns[Dates]), letter(columns[Descriptors]),
                    letter(columns[Patient])});
        }
    }
}

const ProfileTable &ProfileTable::instance()
{
    static const ProfileTable table;
    return table;
}

const ProfileRule *ProfileTable::find(quint32 tag) const
{
    auto rule = m_rules.constFind(tag);
    if (rule == m_rules.cend() && (tag & groupFamily) == curves) {
        rule = m_rules.constFind(curves);
    }
    return rule == m_rules.cend() ? nullptr : &*rule;
}
