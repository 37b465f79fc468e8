#pragma once

#include <QString>

#include <cstring>

/// The system's own words for an errno.
inline QString systemText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}
