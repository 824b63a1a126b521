// Hue, saturation and value of one colour.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "tavik/frame/arithmetic.h"

namespace tavik {

// `hue` keeps its number, scaled to degrees, where no component is the largest: with NaN.
inline void rgb_to_hsv(float r, float g, float b, float &hue, float &saturation, float &value) {
    const float largest = std::fmax(r, std::fmax(g, b));
    const float range = largest - std::fmin(r, std::fmin(g, b));
    value = largest;
    saturation = largest != 0.0F ? range / largest : 0.0F;
    if (saturation == 0.0F) {
        hue = -1.0F;
        return;
    }
    if (r == largest)
        hue = (g - b) / range;
    else if (g == largest)
        hue = 2.0F + (b - r) / range;
    else if (b == largest)
        hue = 4.0F + (r - g) / range;
    hue *= 60.0F;
    if (hue < 0.0F) hue += 360.0F;
}

// 1/60 to single precision.
constexpr float sector_per_degree = 0.016666668F;

inline float clip_to_unit(float value) { return value > 1.0F ? 1.0F : (value < 0.0F ? 0.0F : value); }

// Outside the six sectors of the hue circle, r, g and b are only clipped.
inline void hsv_to_rgb(float h, float s, float v, float &r, float &g, float &b) {
    const float sectors = (h == 360.0F ? 0.0F : h) * sector_per_degree;
    const int32_t sector = truncate(sectors);
    const float f = sectors - static_cast<float>(sector);
    const float p = v * (1.0F - s);
    const float q = v * (1.0F - f * s);
    const float t = v * (1.0F - (1.0F - f) * s);
    if (sector >= 0 && sector < 6) {
        const float colours[6][3] = {{v, t, p}, {q, v, p}, {p, v, t}, {p, q, v}, {t, p, v}, {v, p, q}};
        r = colours[sector][0];
        g = colours[sector][1];
        b = colours[sector][2];
    }
    for (float *component : {&r, &g, &b}) *component = clip_to_unit(*component);
}

} // namespace tavik
