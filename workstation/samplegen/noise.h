#pragma once

#include "vector3.h"

#include <cmath>
#include <cstdint>

/// Noise that is the same at every run and on every machine.
namespace Noise {

/// -1 to 1, unrelated from one integer place to the next.
inline float white(int x, int y, int z)
{
    std::uint32_t hash =
        std::uint32_t(x) * 374761393U + std::uint32_t(y) * 668265263U + std::uint32_t(z) * 2147483647U;
    hash = (hash ^ (hash >> 13)) * 1274126177U;
    hash ^= hash >> 16;
    return float(hash & 0xffffU) / 32767.5F - 1.0F;
}

/// -1 to 1, smooth over about one unit.
inline float smooth(const Vector3 &place)
{
    const float floorX = std::floor(place.x);
    const float floorY = std::floor(place.y);
    const float floorZ = std::floor(place.z);
    const auto eased = [](float t) { return t * t * (3 - 2 * t); };
    const float u = eased(place.x - floorX);
    const float v = eased(place.y - floorY);
    const float w = eased(place.z - floorZ);
    float sum = 0;
    for (int corner = 0; corner < 8; ++corner) {
        const int dx = corner & 1;
        const int dy = (corner >> 1) & 1;
        const int dz = (corner >> 2) & 1;
        const float weight = (dx ? u : 1 - u) * (dy ? v : 1 - v) * (dz ? w : 1 - w);
        sum += weight * white(int(floorX) + dx, int(floorY) + dy, int(floorZ) + dz);
    }
    return sum;
}

} // namespace Noise
