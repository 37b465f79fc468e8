#include "recordstatements.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace {

QStringList columnsOf(RecordLevel level)
{
    QStringList columns;
    if (const char *parent = recordParentColumn(level)) {
        columns.append(QLatin1String(parent));
    }
    for (const AttributeInfo &info : RecordStatements::attributesOf(level)) {
        columns.append(QLatin1Char('"') + QLatin1String(info.keyword) + QLatin1Char('"'));
    }
    if (level == RecordLevel::Image) {
        columns += {QStringLiteral("FilePath"), QStringLiteral("SourcePath"), QStringLiteral("FileSize"),
            QStringLiteral("FileTime"), QStringLiteral("FileInode")};
    }
    return columns;
}

} // namespace

std::vector<AttributeInfo> RecordStatements::attributesOf(RecordLevel level)
{
    std::vector<AttributeInfo> result;
    const auto &all = attributeTable();
    std::copy_if(std::begin(all), std::end(all), std::back_inserter(result),
        [level](const AttributeInfo &info) { return info.level == level; });
    return result;
}

QString RecordStatements::insert(RecordLevel level)
{
    const QStringList columns = columnsOf(level);
    QStringList marks;
    marks.reserve(columns.size());
    for (int i = 0; i < columns.size(); ++i) {
        marks.append(QStringLiteral("?"));
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(QLatin1String(recordTableName(level)), columns.join(QLatin1String(", ")),
            marks.join(QLatin1String(", ")));
}

QString RecordStatements::updateImage()
{
    return QStringLiteral("UPDATE imageformat SET %1 = ? WHERE pk = ?")
        .arg(columnsOf(RecordLevel::Image).join(QLatin1String(" = ?, ")));
}
