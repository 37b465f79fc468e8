#include "imagelist.h"

#include "dicomreader.h"
#include "imagefile.h"
#include "indexconnection.h"
#include "recordsql.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

/// What numbers of pictures can count.
constexpr int mostPlaces = 1'000'000'000;

QStringList filesBelow(const QString &path, const std::atomic<bool> &stop)
{
    if (!QFileInfo(path).isDir()) {
        return {path};
    }
    QStringList files;
    QDirIterator walk(path, QDir::Files, QDirIterator::Subdirectories);
    while (!stop && walk.hasNext()) {
        files.append(walk.next());
    }
    files.sort();
    return files;
}

} // namespace

void ImageList::append(const QString &path, int declaredFrames)
{
    const bool isPossible = declaredFrames > 1 && declaredFrames <= ImageFile::maximumFrames
        && declaredFrames <= QFileInfo(path).size() && size() < mostPlaces;
    m_ends.append(size() + (isPossible ? declaredFrames : 1));
    m_paths.append(path);
}

ImagePlace ImageList::at(int index) const
{
    const int file = int(std::upper_bound(m_ends.begin(), m_ends.end(), index) - m_ends.begin());
    return {m_paths.at(file), index - (file > 0 ? m_ends.at(file - 1) : 0)};
}

ImageList ImageLists::ofSeries(const QString &indexPath, qlonglong series, const std::atomic<bool> &stop)
{
    const IndexConnection index(indexPath);
    ImageList list;
    if (!index.isOpen()) {
        return list;
    }
    QSqlQuery query(index.database());
    query.setForwardOnly(true);
    query.prepare(QStringLiteral("SELECT FilePath, NumberOfFrames FROM imageformat AS image "
                                 "WHERE series_fk = ? ORDER BY ")
        + QLatin1String(RecordSql::imageOrder));
    query.addBindValue(series);
    query.exec();
    while (!stop && query.next()) {
        list.append(query.value(0).toString(), query.value(1).toInt());
    }
    return list;
}

ImageList ImageLists::ofFiles(const QStringList &paths, const std::atomic<bool> &stop)
{
    DicomReader reader;
    ImageList list;
    for (const QString &path : paths) {
        for (const QString &file : filesBelow(path, stop)) {
            if (stop) {
                return list;
            }
            const DicomReadResult read = reader.read(QFile::encodeName(file));
            list.append(file, read.header[Attribute::NumberOfFrames].toInt());
        }
    }
    return list;
}
