// Nearest-neighbour scaling of planes to bitmap pixels.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tavik {

struct ScaledPlanes {
    const uint8_t *red;
    const uint8_t *green;
    const uint8_t *blue;
    int32_t width, height;         // at least 1
    int32_t out_width, out_height; // at least 1, what the planes are scaled to
};

// Writes the first `columns` of the first `rows`.
void scale_to_bitmap(const ScaledPlanes &planes, int32_t columns, int32_t rows, uint32_t *dst, std::ptrdiff_t stride);

} // namespace tavik
