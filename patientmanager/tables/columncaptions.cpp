#include "columncaptions.h"

#include "configlocation.h"

#include <QSettings>
#include <QSqlTableModel>

QHash<QString, QString> columnCaptions(const QString &table)
{
    QSettings settings(ConfigLocation::grouped(QLatin1String(ConfigKey::renameIni)), QSettings::IniFormat);
    settings.beginGroup(table);
    QHash<QString, QString> captions;
    const QStringList columns = settings.allKeys();
    for (const QString &column : columns) {
        const QByteArray bytes = settings.value(column).toString().toLatin1();
        captions.insert(column, QString::fromLocal8Bit(bytes));
    }
    return captions;
}

void applyColumnCaptions(QSqlTableModel *model)
{
    const QHash<QString, QString> captions = columnCaptions(model->tableName());
    for (auto caption = captions.begin(); caption != captions.end(); ++caption) {
        model->setHeaderData(model->fieldIndex(caption.key()), Qt::Horizontal, caption.value(), Qt::EditRole);
    }
}
