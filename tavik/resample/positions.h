// Source positions of a run of destination indices.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "tavik/frame/arithmetic.h"

namespace tavik {

// As many columns as are handled at once: what is worked out for them stays in the cache, on the stack.
constexpr int32_t block_columns = 512;

struct Position {
    int32_t whole;
    float fraction;

    Position(int32_t index, float scale) {
        const float position = static_cast<float>(index) * scale;
        whole = truncate(position);
        fraction = position - static_cast<float>(whole);
    }
};

struct Positions {
    std::array<int32_t, block_columns> whole;
    std::array<float, block_columns> fraction;
    std::size_t count;

    Positions(int32_t first, int32_t end, float scale) : count(static_cast<std::size_t>(end - first)) {
        for (std::size_t i = 0; i < count; ++i) {
            const Position position(first + static_cast<int32_t>(i), scale);
            whole[i] = position.whole;
            fraction[i] = position.fraction;
        }
    }
};

// Calls body(first, end) for the blocks of [0, count).
template <class Body> void for_each_block(int32_t count, const Body &body) {
    for (int32_t first = 0; first < count;) {
        const int32_t end = count - first > block_columns ? first + block_columns : count;
        body(first, end);
        first = end;
    }
}

// Where a row begins in a plane of such rows.
inline std::size_t row_start(std::size_t stride, int32_t row) { return stride * static_cast<std::size_t>(row); }

// dst[i] = src[indices[i]].
inline void copy_indexed(const uint8_t *src, const int32_t *indices, uint8_t *dst, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) dst[i] = src[indices[i]];
}

} // namespace tavik
