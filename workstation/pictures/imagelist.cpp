#include "imagelist.h"

#include "dicomreader.h"
#include "imagefile.h"
#include "indexconnection.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

namespace {

void append(ImageList &list, const QString &path, int declaredFrames)
{
    // More than an image can have is refused as a whole.
    const int frames = declaredFrames > 0 && declaredFrames <= ImageFile::maximumFrames ? declaredFrames : 1;
    for (int frame = 0; frame < frames; ++frame) {
        list.append({path, frame, frames});
    }
}

QStringList filesBelow(const QString &path)
{
    if (!QFileInfo(path).isDir()) {
        return {path};
    }
    QStringList files;
    QDirIterator walk(path, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        files.append(walk.next());
    }
    files.sort();
    return files;
}

} // namespace

ImageList ImageLists::ofSeries(const QString &indexPath, qlonglong series)
{
    const IndexConnection index(indexPath);
    ImageList list;
    if (!index.isOpen()) {
        return list;
    }
    QSqlQuery query(index.database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT FilePath, NumberOfFrames FROM imageformat WHERE series_fk = ? "
                                 "ORDER BY InstanceNumber, pk"));
    query.addBindValue(series);
    query.exec();
    while (query.next()) {
        append(list, query.value(0).toString(), query.value(1).toInt());
    }
    return list;
}

ImageList ImageLists::ofFiles(const QStringList &paths)
{
    DicomReader reader;
    ImageList list;
    for (const QString &path : paths) {
        for (const QString &file : filesBelow(path)) {
            const DicomReadResult read = reader.read(QFile::encodeName(file));
            append(list, file, read.header[Attribute::NumberOfFrames].toInt());
        }
    }
    return list;
}
