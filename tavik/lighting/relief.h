// Height planes as surfaces.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/vector.h"

namespace tavik {

// Three rows of a height plane whose edge samples are repeated beyond its edges.
template <class Height> struct ReliefRows {
    const Height *above, *here, *below;
    int32_t width;

    ReliefRows(const Height *heights, int32_t columns, int32_t rows, int32_t y) : width(columns) {
        const auto row = [&](int32_t index) {
            return heights +
                   static_cast<std::size_t>(std::clamp(index, 0, rows - 1)) * static_cast<std::size_t>(columns);
        };
        above = row(y - 1);
        here = row(y);
        below = row(y + 1);
    }
};

struct Gradient {
    float x, y;
};

// Sobel's gradient of the heights about column x, with the columns beside it given: heights per pixel.
template <class Height>
[[gnu::always_inline]] inline Gradient sobel(const ReliefRows<Height> &rows, std::ptrdiff_t left, std::ptrdiff_t x,
                                             std::ptrdiff_t right) {
    const auto a = static_cast<float>(rows.above[left]);
    const auto b = static_cast<float>(rows.above[x]);
    const auto c = static_cast<float>(rows.above[right]);
    const auto d = static_cast<float>(rows.here[left]);
    const auto f = static_cast<float>(rows.here[right]);
    const auto g = static_cast<float>(rows.below[left]);
    const auto i = static_cast<float>(rows.below[x]);
    const auto j = static_cast<float>(rows.below[right]);
    return {(((c - a) + (j - g)) + (f - d) * 2.0F) * 0.125F, (((g - a) + (j - c)) + (i - b) * 2.0F) * 0.125F};
}

// The unit normal of a surface with that gradient, its heights scaled.
[[gnu::always_inline]] inline Vector normal_of(Gradient gradient, float scale) {
    const float x = gradient.x * scale;
    const float y = gradient.y * scale;
    const float inverse = 1.0F / std::sqrt((x * x + y * y) + 1.0F);
    return {-x * inverse, -y * inverse, inverse};
}

// Calls body(rows, start) for each row of a height plane, in parallel; `start` is its first sample's index.
template <class Height, class Body>
void for_each_relief_row(int32_t width, int32_t height, const Height *heights, const Body &body) {
    if (width <= 0) return;
    // A pixel costs several times a light element.
    parallel_for(0, height, std::max(row_grain(width) / 4, 1), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y)
            body(ReliefRows<Height>(heights, width, height, y),
                 static_cast<std::size_t>(y) * static_cast<std::size_t>(width));
    });
}

} // namespace tavik
