#pragma once

#include <QByteArray>

/**
 * A file, or bytes in memory, seen through a window that moves over it; owned by one reader and used again
 * for each file. Nothing beyond the file's size at its opening is ever handed out, and no more is read than
 * was asked for, rounded up to the window.
 */
class FileWindow
{
public:
    /// The header of nearly every file fits; a small file is read by one call.
    static constexpr qint64 windowSize = qint64(32) * 1024;

    FileWindow() = default;
    ~FileWindow();
    FileWindow(const FileWindow &) = delete;
    FileWindow &operator=(const FileWindow &) = delete;

    /// Opens a regular file, never waiting for it; errno says why it failed (EINVAL for what is no regular
    /// file).
    bool open(const QByteArray &path);
    /// Looks at bytes in memory instead.
    void openBytes(const QByteArray &bytes);
    void close();

    qint64 size() const { return m_size; }
    /// Of memory, until it is closed or a smaller part is asked for.
    qint64 heldBytes() const { return m_buffer.size(); }
    /// True once the system failed to read what the file should have; errno is kept in error().
    bool failed() const { return m_error != 0; }
    int error() const { return m_error; }

    /// The bytes from offset on, valid until the next call; null where the file does not have that many.
    const uchar *at(qint64 offset, qint64 length)
    {
        if (offset >= m_start && length <= m_filled - (offset - m_start)) {
            return reinterpret_cast<const uchar *>(m_data) + (offset - m_start);
        }
        return refill(offset, length);
    }

private:
    const uchar *refill(qint64 offset, qint64 length);

    QByteArray m_buffer;
    const char *m_data = nullptr;
    qint64 m_start = 0;
    qint64 m_filled = 0;
    qint64 m_size = 0;
    int m_error = 0;
    int m_file = -1;
};
