#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

/// One picture to scroll to: a frame of a file.
struct ImagePlace
{
    QString path;
    int frame = 0;
};

/// The pictures of files, frame by frame. Takes room for each file, however many frames it says to have.
class ImageList
{
public:
    /// @param declaredFrames as the file or the index says; more than the file has bytes count as one, since
    /// such a file is refused as a whole
    void append(const QString &path, int declaredFrames);

    int size() const { return m_ends.isEmpty() ? 0 : m_ends.last(); }
    bool isEmpty() const { return m_ends.isEmpty(); }
    ImagePlace at(int index) const;

private:
    QStringList m_paths;
    QVector<int> m_ends; ///< of each file, the index behind its last frame
};

/// Lists of pictures. Both read files or the index: for worker threads. They end early, with what they have,
/// where stop is set.
namespace ImageLists {

/// The images of a series by their numbers.
ImageList ofSeries(const QString &indexPath, qlonglong series, const std::atomic<bool> &stop);
/// Files in the order given, folders with all files below them; of unreadable ones the list has a place too.
ImageList ofFiles(const QStringList &paths, const std::atomic<bool> &stop);

} // namespace ImageLists
