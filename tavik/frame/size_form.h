// Turns the size forms of the exports into element counts. Sizes are 32-bit, as the callers' frames are: the
// products wrap around, and a negative result is an empty range.
#pragma once

#include <cstddef>

#include "tavik/frame/arithmetic.h"

namespace tavik {

constexpr std::size_t element_count(int32_t count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

// width × height.
constexpr std::size_t counts(int32_t width, int32_t height) { return element_count(wrap_mul(width, height)); }

// Inclusive bounds: (x_max + 1) × (y_max + 1).
constexpr std::size_t upper_bounds(int32_t x_max, int32_t y_max) {
    return counts(wrap_add(x_max, 1), wrap_add(y_max, 1));
}

// Counts without the last element: width × height − 1.
constexpr std::size_t one_short(int32_t width, int32_t height) {
    return element_count(wrap_sub(wrap_mul(width, height), 1));
}

} // namespace tavik
