#pragma once

#include <QByteArray>
#include <QVector>

class FileWindow;

/**
 * The fragments of encapsulated pixel data and the frames that they belong to. Read once for a file; holds
 * only where each stands.
 */
class Fragments
{
public:
    /// Lists the fragments from the value of the pixel data on, to its end or to the end of a file that was
    /// cut. @return false where there is none
    bool read(FileWindow &file, qint64 offset);
    /// The bytes of one frame, counted from 0; null where the file does not have them.
    /// @param mostBytes longer ones are not read
    QByteArray frame(FileWindow &file, int number, int frames, qint64 mostBytes) const;

    qint64 heldBytes() const
    {
        return m_fragments.size() * qint64(sizeof(Fragment)) + m_offsets.size() * qint64(sizeof(quint32));
    }

private:
    struct Fragment
    {
        qint64 offset;
        quint32 length;
    };
    struct Range
    {
        int first = 0;
        int end = 0;
    };

    Range rangeOf(FileWindow &file, int number, int frames) const;
    Range byOffsets(int number) const;
    Range byMarkers(FileWindow &file, int number) const;

    QVector<Fragment> m_fragments;
    QVector<quint32> m_offsets; ///< the file's table: where each frame starts behind the table
    qint64 m_base = 0; ///< from where these count
};
