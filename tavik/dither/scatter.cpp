#include <algorithm>
#include <array>

#include "tavik/dither/dither.h"
#include "tavik/frame/elementary.h"
#include "tavik/frame/hash.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/sampling.h"
#include "tavik/frame/size_form.h"

namespace {

using namespace tavik;

// -1 .. 1 on each axis.
struct Displacement {
    float x, y;

    [[gnu::always_inline]] explicit Displacement(uint32_t hash_value)
        : x(static_cast<float>(static_cast<int32_t>(hash_value & 0xFFFFU)) * 0x1p-15F - 1.0F),
          y(static_cast<float>(static_cast<int32_t>(hash_value >> 16)) * 0x1p-15F - 1.0F) {}
};

// A row of pixels between two rows of cells.
struct FrostedRow {
    uint32_t hash_above, hash_below;
    float part;
};

} // namespace

#define TAVIK_ROWS "tavik/dither/scatter_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(uint32_t hash_of_row, int32_t first, int32_t y, float amount, int32_t width, int32_t height,
                        int32_t *from, std::size_t count)>
    scatter = TAVIK_EVERY_LEVEL(scatter);
constexpr PerLevel<void(const FrostedRow &row, int32_t first, int32_t y, float amount, float per_cell, float *from_x,
                        float *from_y, std::size_t count)>
    frost = TAVIK_EVERY_LEVEL(frost);

// Calls body(x, y, count, at) for runs of pixels, the first of which is element `at` of the planes.
template <class Body> void for_each_run(int32_t width, int32_t height, const Body &body) {
    // Hashing and gathering cost several times a light element.
    parallel_for(0, height, std::max(row_grain(width) / 8, 1), [&](int32_t begin, int32_t end) {
        const std::size_t columns = element_count(width);
        for (int32_t y = begin; y < end; ++y)
            for (std::size_t x = 0; x < columns; x += sampling_run)
                body(static_cast<int32_t>(x), y, std::min(sampling_run, columns - x),
                     static_cast<std::size_t>(y) * columns + x);
    });
}

} // namespace

TAVIK_EXPORT(void)
xjitter(int32_t width, int32_t height, float amount, int32_t seed, const uint8_t *src_r, const uint8_t *src_g,
        const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    for_each_run(width, height, [&](int32_t x, int32_t y, std::size_t count, std::size_t at) {
        std::array<int32_t, sampling_run> from;
        scatter.active()(hash_of_row(y, seed), x, y, amount, width, height, from.data(), count);
        for (std::size_t i = 0; i < count; ++i) {
            dst_r[at + i] = src_r[from[i]];
            dst_g[at + i] = src_g[from[i]];
            dst_b[at + i] = src_b[from[i]];
        }
    });
}

TAVIK_EXPORT(void)
xjitter2(int32_t width, int32_t height, float amount, float cell, int32_t seed, const uint8_t *src_r,
         const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const float per_cell = 1.0F / cell;
    const uint8_t *const src[] = {src_r, src_g, src_b};
    for_each_run(width, height, [&](int32_t x, int32_t y, std::size_t count, std::size_t at) {
        const float v = static_cast<float>(y) * per_cell;
        const int32_t above = floor_to_int(v);
        const FrostedRow row = {hash_of_row(above, seed), hash_of_row(wrap_add(above, 1), seed),
                                smooth(v - static_cast<float>(above))};
        std::array<float, sampling_run> from_x;
        std::array<float, sampling_run> from_y;
        frost.active()(row, x, y, amount, per_cell, from_x.data(), from_y.data(), count);
        uint8_t *const dst[] = {dst_r + at, dst_g + at, dst_b + at};
        sample_three_planes(src, width, height, from_x.data(), from_y.data(), dst, count);
    });
}
