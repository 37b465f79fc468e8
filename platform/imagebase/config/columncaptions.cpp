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

using Captions = QHash<QString, QString>;

Captions captionsIn(const QString &file, const QString &table, bool isUtf8)
{
    QSettings settings(file, QSettings::IniFormat);
    settings.beginGroup(table);
    Captions captions;
    const QStringList columns = settings.allKeys();
    for (const QString &column : columns) {
        const QByteArray bytes = settings.value(column).toString().toLatin1();
        captions.insert(column, isUtf8 ? QString::fromUtf8(bytes) : QString::fromLocal8Bit(bytes));
    }
    return captions;
}

} // namespace

namespace ColumnCaptions {

void setLanguage(const QString &language)
{
    chosenLanguage() = language;
}

QHash<QString, QString> of(const QString &table)
{
    Captions captions =
        captionsIn(ConfigLocation::grouped(QLatin1String(ConfigKey::renameIni)), table, false);
    if (chosenLanguage().isEmpty()) {
        return captions;
    }
    const QString file = QStringLiteral("rename.%1.ini").arg(chosenLanguage());
    const Captions translated = captionsIn(ConfigLocation::grouped(file), table, true);
    const Captions shipped = captionsIn(QStringLiteral(":/imagebase/config/rename.ini"), table, false);
    for (auto caption = translated.begin(); caption != translated.end(); ++caption) {
        const QString &column = caption.key();
        if (!captions.contains(column) || captions.value(column) == shipped.value(column)) {
            captions.insert(column, caption.value());
        }
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
