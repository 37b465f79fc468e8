#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// One picture to scroll to: a frame of a file.
struct ImagePlace
{
    QString path;
    int frame = 0;
    int frames = 1; ///< of the file, as far as is known
};

using ImageList = QVector<ImagePlace>;

/// Lists of pictures. Both read files or the index: for worker threads.
namespace ImageLists {

/// The images of a series by their numbers, multi-frame ones frame by frame.
ImageList ofSeries(const QString &indexPath, qlonglong series);
/// Files in the order given, folders with all files below them; of unreadable ones the list has a place too.
ImageList ofFiles(const QStringList &paths);

} // namespace ImageLists
