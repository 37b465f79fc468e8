#include "sqlitetempfolder.h"

#include <QDir>
#include <QFileInfo>

#include <sqlite3.h>

QString sqliteTempFolder()
{
    const QStringList candidates{QString::fromUtf8(sqlite3_temp_directory),
        QFile::decodeName(qgetenv("SQLITE_TMPDIR")), QFile::decodeName(qgetenv("TMPDIR")),
        QStringLiteral("/var/tmp"), QStringLiteral("/usr/tmp"), QStringLiteral("/tmp")};
    for (const QString &candidate : candidates) {
        const QFileInfo folder(candidate);
        if (!candidate.isEmpty() && folder.isDir() && folder.isWritable() && folder.isExecutable()) {
            return candidate;
        }
    }
    return QDir::currentPath();
}
