#include <algorithm>

#include "tavik/blockmatch/block.h"
#include "tavik/blockmatch/blockmatch.h"

namespace {

struct MaskedPlanes {
    const uint8_t *planes[3];
    const uint8_t *mask;
};

// What is known of two blocks: the sum of squared differences and the number of pixels.
struct Known {
    uint64_t sum;
    int64_t count;
};

} // namespace

#define TAVIK_ROWS "tavik/blockmatch/comparison_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using BlockCost = int32_t(const uint8_t *a, const uint8_t *b, std::size_t stride);
constexpr PerLevel<BlockCost> absolute_differences_16 = TAVIK_EVERY_LEVEL(absolute_differences_16);
constexpr PerLevel<BlockCost> absolute_differences_8 = TAVIK_EVERY_LEVEL(absolute_differences_8);
constexpr PerLevel<uint32_t(const uint8_t *a, const uint8_t *b, std::size_t stride, std::size_t side)>
    squared_differences = TAVIK_EVERY_LEVEL(squared_differences);
constexpr PerLevel<Known(const MaskedPlanes &a, const MaskedPlanes &b, std::size_t at_a, std::size_t at_b,
                         std::size_t stride, std::size_t side)>
    known_differences = TAVIK_EVERY_LEVEL(known_differences);

} // namespace

TAVIK_EXPORT(int32_t)
xcompareblock16(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t stride, int32_t rows,
                const uint8_t *plane_a, const uint8_t *plane_b) {
    const BlockPlane plane = {stride, rows};
    if (!plane.holds(x_a, y_a, 8) || !plane.holds(x_b, y_b, 8)) return not_comparable;
    return absolute_differences_16.active()(plane_a + plane.start_of_block(x_a, y_a, 8),
                                            plane_b + plane.start_of_block(x_b, y_b, 8), plane.stride());
}

TAVIK_EXPORT(int32_t)
xcompareblock(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t stride, int32_t rows, const uint8_t *plane_a,
              const uint8_t *plane_b) {
    const BlockPlane plane = {stride, rows};
    if (!plane.holds(x_a, y_a, 4) || !plane.holds(x_b, y_b, 4)) return not_comparable;
    return absolute_differences_8.active()(plane_a + plane.start_of_block(x_a, y_a, 4),
                                           plane_b + plane.start_of_block(x_b, y_b, 4), plane.stride());
}

TAVIK_EXPORT(int32_t)
CompareBlock(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t size, int32_t x_max, int32_t y_max,
             const uint8_t *a1, const uint8_t *a2, const uint8_t *a3, const uint8_t *b1, const uint8_t *b2,
             const uint8_t *b3) {
    const BlockPlane plane = block_plane_to(x_max, y_max);
    const int32_t half = size / 2;
    if (!plane.holds(x_a, y_a, half) || !plane.holds(x_b, y_b, half)) return not_comparable;
    if (half <= 0) return 0;
    const std::size_t at_a = plane.start_of_block(x_a, y_a, half);
    const std::size_t at_b = plane.start_of_block(x_b, y_b, half);
    const auto cost = [&](const uint8_t *a, const uint8_t *b) {
        return squared_differences.active()(a + at_a, b + at_b, plane.stride(), 2 * static_cast<std::size_t>(half));
    };
    return static_cast<int32_t>(cost(a1, b1) + cost(a2, b2) + cost(a3, b3));
}

TAVIK_EXPORT(int32_t)
CompareBlock_mask(int32_t x_a, int32_t y_a, int32_t x_b, int32_t y_b, int32_t size, int32_t x_max, int32_t y_max,
                  const uint8_t *a1, const uint8_t *a2, const uint8_t *a3, const uint8_t *b1, const uint8_t *b2,
                  const uint8_t *b3, const uint8_t *mask_a, const uint8_t *mask_b, int32_t min_count) {
    const BlockPlane plane = block_plane_to(x_max, y_max);
    const int32_t half = size / 2;
    if (!plane.holds(x_a, y_a, half) || !plane.holds(x_b, y_b, half)) return not_comparable;
    if (half <= 0) return 0;
    const MaskedPlanes a = {{a1, a2, a3}, mask_a};
    const MaskedPlanes b = {{b1, b2, b3}, mask_b};
    const std::size_t side = 2 * static_cast<std::size_t>(half);
    const Known known = known_differences.active()(a, b, plane.start_of_block(x_a, y_a, half),
                                                   plane.start_of_block(x_b, y_b, half), plane.stride(), side);
    if (known.count < std::max(min_count, 1)) return not_comparable;
    const uint64_t cost = known.sum * (uint64_t{side} * side) / static_cast<uint64_t>(known.count);
    return static_cast<int32_t>(std::min(cost, uint64_t{not_comparable - 1}));
}
