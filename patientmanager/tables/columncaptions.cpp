#include "columncaptions.h"

#include "configlocation.h"

#include <QSettings>
#include <QSqlTableModel>

void applyColumnCaptions(QSqlTableModel *model)
{
    QSettings settings(ConfigLocation::grouped(QLatin1String(ConfigKey::renameIni)), QSettings::IniFormat);
    settings.beginGroup(model->tableName());
    const QStringList columns = settings.allKeys();
    for (const QString &column : columns) {
        const QByteArray bytes = settings.value(column).toString().toLatin1();
        model->setHeaderData(
            model->fieldIndex(column), Qt::Horizontal, QString::fromLocal8Bit(bytes), Qt::EditRole);
    }
}
