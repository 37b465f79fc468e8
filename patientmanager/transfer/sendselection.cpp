#include "sendselection.h"

#include "filequeries.h"

#include <QSet>
#include <QVariant>

SendSelection SendSelection::read(RecordLevel level, const QList<qlonglong> &keys)
{
    SendSelection selection;
    const QString query = FileQueries::ofSend(level);
    if (query.isEmpty() || keys.isEmpty()) {
        return selection;
    }
    QSet<QString> known;
    QStringList files;
    for (const qlonglong key : keys) {
        QSqlQuery rows = FileQueries::rows(query, key);
        while (rows.next()) {
            files.append(rows.value(FileQueries::SendFilePath).toString());
            const QString name = rows.value(FileQueries::SendPatientName).toString();
            if (!known.contains(name)) {
                known.insert(name);
                selection.names.append(name);
                selection.modalities.append(rows.value(FileQueries::SendModality).toString());
            }
        }
        if (level == RecordLevel::Patient) {
            selection.files.append(files);
            files.clear();
        }
    }
    if (level != RecordLevel::Patient) {
        selection.files.append(files);
    }
    return selection;
}
