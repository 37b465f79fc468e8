#include "columncaptions.h"

#include "configlocation.h"

#include <QSettings>
#include <QSqlTableModel>

namespace {

QString &chosenLanguage()
{
    static QString language;
    return language;
}

QString languageFile()
{
    return ConfigLocation::grouped(QStringLiteral("rename.%1.ini").arg(chosenLanguage()));
}

bool hasLanguageFile()
{
    return !chosenLanguage().isEmpty()
        && !QSettings(languageFile(), QSettings::IniFormat).childGroups().isEmpty();
}

} // namespace

namespace ColumnCaptions {

void setLanguage(const QString &language)
{
    chosenLanguage() = language;
}

QHash<QString, QString> of(const QString &table)
{
    const bool isUtf8 = hasLanguageFile();
    const QString file =
        isUtf8 ? languageFile() : ConfigLocation::grouped(QLatin1String(ConfigKey::renameIni));
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup(table);
    QHash<QString, QString> captions;
    const QStringList columns = settings.allKeys();
    for (const QString &column : columns) {
        const QByteArray bytes = settings.value(column).toString().toLatin1();
        captions.insert(column, isUtf8 ? QString::fromUtf8(bytes) : QString::fromLocal8Bit(bytes));
    }
    return captions;
}

void apply(QSqlTableModel *model)
{
    const QHash<QString, QString> captions = of(model->tableName());
    for (auto caption = captions.begin(); caption != captions.end(); ++caption) {
        model->setHeaderData(model->fieldIndex(caption.key()), Qt::Horizontal, caption.value(), Qt::EditRole);
    }
}

} // namespace ColumnCaptions
