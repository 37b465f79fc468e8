#pragma once

#include <QtGlobal>

/**
 * A share of the memory that decoding takes in the whole process at a time: waits until there is room for it,
 * and gives it back at its end. A thread holds one at most.
 */
class DecodingShare
{
public:
    /// No share is larger.
    static constexpr qint64 whole = qint64(384) * 1024 * 1024;

    explicit DecodingShare(qint64 bytes);
    ~DecodingShare();
    DecodingShare(const DecodingShare &) = delete;
    DecodingShare &operator=(const DecodingShare &) = delete;

private:
    const int m_units;
};
