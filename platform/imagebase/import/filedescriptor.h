#pragma once

#include <unistd.h>

/// An open file of the system that is closed at the end; negative where it could not be opened.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd)
        : m_fd(fd)
    { }
    ~FileDescriptor()
    {
        if (m_fd >= 0) {
            close(m_fd);
        }
    }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    operator int() const { return m_fd; }

private:
    int m_fd;
};
