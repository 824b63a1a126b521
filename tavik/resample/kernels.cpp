#include <algorithm>
#include <cmath>
#include <cstddef>

#include "tavik/frame/arithmetic.h"
#include "tavik/resample/interpolation.h"
#include "tavik/resample/resample.h"

using namespace tavik;

TAVIK_EXPORT(int32_t) Bilerp(int32_t p00, int32_t p10, int32_t p01, int32_t p11, float tx, float ty) {
    const float top = lerp(static_cast<float>(wrap_sub(p10, p00)), static_cast<float>(p00), tx);
    const float bottom = lerp(static_cast<float>(wrap_sub(p11, p01)), static_cast<float>(p01), tx);
    return truncate(lerp(bottom - top, top, ty));
}

TAVIK_EXPORT(int32_t) BilinearSample(float x, float y, int32_t width, int32_t height, const uint8_t *plane) {
    const int32_t column = truncate(x);
    const int32_t row = truncate(y);
    const int32_t left = std::clamp(column, 0, width - 1);
    const int32_t right = std::min(left + 1, width - 1);
    const int32_t above = std::clamp(row, 0, height - 1);
    const int32_t below = std::min(above + 1, height - 1);
    const auto at = [&](int32_t sample_row, int32_t sample_column) {
        return plane[static_cast<std::size_t>(sample_row) * static_cast<std::size_t>(width) +
                     static_cast<std::size_t>(sample_column)];
    };
    return truncate(bilerp(at(above, left), at(above, right), at(below, left), at(below, right),
                           x - static_cast<float>(column), y - static_cast<float>(row)));
}

TAVIK_EXPORT(float) f_bicubicInterpolate(const float *patch, float tx, float ty) {
    const auto column = [&](int i) {
        const float *samples = patch + 4 * i;
        return catmull_rom(samples[0], samples[1], samples[2], samples[3], ty);
    };
    return catmull_rom(column(0), column(1), column(2), column(3), tx);
}

TAVIK_EXPORT(float) Bspline(float p0, float p1, float p2, float p3, float t) {
    constexpr float sixth = 0.16666667F;
    constexpr float four_sixths = 0.6666667F;
    const float cubic = -p0 + 3.0F * p1 - 3.0F * p2 + p3;
    const float square = 3.0F * p0 - 6.0F * p1 + 3.0F * p2;
    const float linear = -3.0F * p0 + 3.0F * p2;
    return (cubic * (t * t * t) + square * (t * t) + linear * t) * sixth + (p0 * sixth + p1 * four_sixths + p2 * sixth);
}

TAVIK_EXPORT(void) RotatePoint(float angle, float *x, float *y) {
    const float radians = angle * 0.017453292F;
    // In double precision, so that every runtime's functions round to the same floats.
    const auto cosine = static_cast<float>(std::cos(static_cast<double>(radians)));
    const auto sine = static_cast<float>(std::sin(static_cast<double>(radians)));
    const float from_x = *x;
    const float from_y = *y;
    *x = from_x * cosine - from_y * sine;
    *y = from_y * cosine + from_x * sine;
}

TAVIK_EXPORT(void) TransformPoint(const float *in, float *out, const float *matrix) {
    const float x = in[0];
    const float y = in[1];
    const float z = in[2];
    const auto row = [&](int index) {
        const float *m = matrix + index;
        return m[0] * x + m[4] * y + m[8] * z + m[12];
    };
    const float w = row(3);
    // Both before either is written: the matrix may not be, but the point may be the result.
    const float to_x = row(0) * (1.0F / w);
    const float to_y = row(1) * (1.0F / w);
    if (w != 0.0F) {
        out[0] = to_x;
        out[1] = to_y;
    }
    out[2] = z;
}

TAVIK_EXPORT(int32_t)
ScaleHelper(int32_t src_count, int32_t start, int32_t end, float scale, int32_t origin, const uint8_t *src,
            uint8_t *dst, int32_t dst_offset, int32_t src_offset) {
    const int32_t distance = wrap_sub(start, origin);
    if (start > end) return distance;
    uint8_t *to = dst + dst_offset;
    float position = static_cast<float>(distance) * scale;
    for (int64_t step = start; step <= end; ++step) {
        position += scale;
        const int32_t pixel = truncate(position);
        if (pixel < 0 || pixel >= src_count) continue;
        to = std::copy_n(src + 3 * (static_cast<std::ptrdiff_t>(pixel) + src_offset), 3, to);
    }
    return 0;
}
