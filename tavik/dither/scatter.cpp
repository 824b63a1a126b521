#include <array>

#include "tavik/dither/dither.h"
#include "tavik/frame/elementary.h"
#include "tavik/frame/hash.h"
#include "tavik/frame/sampling.h"

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

} // namespace

TAVIK_EXPORT(void)
xjitter(int32_t width, int32_t height, float amount, int32_t seed, const uint8_t *src_r, const uint8_t *src_g,
        const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    for_each_run(width, height, [&](const PixelRun &run) {
        const auto [x, y, count, at] = run;
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
    for_each_run(width, height, [&](const PixelRun &run) {
        const auto [x, y, count, at] = run;
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
