// Layers and masks of a photo's size, drawn from formulas.
#pragma once

#include <algorithm>
#include <cmath>

#include "host/image.h"

namespace gallery {

using Plane = std::vector<uint8_t>;

inline uint8_t level(float unit) { return static_cast<uint8_t>(255 * std::clamp(unit, 0.0F, 1.0F)); }

// From a function of the position, 0 .. 1 along either side.
template <class Shade> Plane plane_of(const Image &photo, const Shade &shade) {
    Plane plane(photo.red.size());
    for (int32_t y = 0; y < photo.height; ++y)
        for (int32_t x = 0; x < photo.width; ++x)
            plane[photo.index(x, y)] = level(shade(static_cast<float>(x) / static_cast<float>(photo.width),
                                                   static_cast<float>(y) / static_cast<float>(photo.height)));
    return plane;
}

inline float distance(float x, float y, float centre_x, float centre_y) {
    return std::sqrt((x - centre_x) * (x - centre_x) + (y - centre_y) * (y - centre_y));
}

// Full in the middle, nothing outside, soft between.
inline Plane oval_mask(const Image &photo) {
    return plane_of(photo, [](float x, float y) { return 3 - 6 * distance(x, y, 0.5F, 0.5F); });
}

} // namespace gallery
