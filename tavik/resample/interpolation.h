// The formulas between samples that single-value and plane exports share.
#pragma once

#include <cstdint>

namespace tavik {

// Through p1 at t = 0 and p2 at t = 1.
inline float catmull_rom(float p0, float p1, float p2, float p3, float t) {
    return p1 +
           0.5F * t * ((p2 - p0) + t * ((2.0F * p0 - 5.0F * p1 + 4.0F * p2 - p3) + t * (3.0F * (p1 - p2) + p3 - p0)));
}

inline float lerp(float difference, float from, float t) { return difference * t + from; }

// Between integers whose differences do not overflow.
inline float bilerp(int32_t p00, int32_t p10, int32_t p01, int32_t p11, float tx, float ty) {
    const float top = lerp(static_cast<float>(p10 - p00), static_cast<float>(p00), tx);
    const float bottom = lerp(static_cast<float>(p11 - p01), static_cast<float>(p01), tx);
    return lerp(bottom - top, top, ty);
}

} // namespace tavik
