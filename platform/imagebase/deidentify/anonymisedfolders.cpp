#include "anonymisedfolders.h"

#include <QDir>
#include <QFileInfo>

QString AnonymisedFolders::base(const QString &databasePath)
{
    return QFileInfo(databasePath).absoluteDir().filePath(QStringLiteral("anonymised"));
}

int AnonymisedFolders::sweep(const QString &databasePath, const QDateTime &now,
    const std::function<bool(const QString &folder)> &isNeeded)
{
    int swept = 0;
    const QFileInfoList runs =
        QDir(base(databasePath)).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    for (const QFileInfo &run : runs) {
        const bool isOld = run.lastModified().daysTo(now) > daysKept;
        if (isOld && !isNeeded(run.absoluteFilePath()) && QDir(run.absoluteFilePath()).removeRecursively()) {
            ++swept;
        }
    }
    return swept;
}
