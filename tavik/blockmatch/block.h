// Where blocks lie in planes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace tavik {

constexpr int32_t not_comparable = std::numeric_limits<int32_t>::max();

struct BlockPlane {
    int64_t width;
    int64_t height;

    std::size_t stride() const { return static_cast<std::size_t>(width); }

    // A block is in bounds when its point lies in the planes and stays there moved by `reach` either way.
    bool holds(int64_t x, int64_t y, int64_t reach) const {
        return lies_within(x - reach, width) && lies_within(x + reach, width) && lies_within(y - reach, height) &&
               lies_within(y + reach, height);
    }

    // Where the block that reaches so far to the left and up begins.
    std::size_t start_of_block(int64_t x, int64_t y, int64_t reach) const {
        return static_cast<std::size_t>(y - reach) * stride() + static_cast<std::size_t>(x - reach);
    }

  private:
    static bool lies_within(int64_t at, int64_t count) { return at >= 0 && at < count; }
};

// Upper bounds.
constexpr BlockPlane block_plane_to(int32_t x_max, int32_t y_max) { return {int64_t{x_max} + 1, int64_t{y_max} + 1}; }

} // namespace tavik
