#include <algorithm>
#include <array>

#include "tavik/dither/dither.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/sampling.h"
#include "tavik/frame/size_form.h"

namespace {

using namespace tavik;

// Between two neighbouring samples of a line that repeats.
struct TilePosition {
    int32_t index, next;
    float part;
};

// `span` is the size as a float, `per_tile` its reciprocal.
[[gnu::always_inline]] inline TilePosition position_in_tile(float position, int32_t size, float span, float per_tile) {
    const float wrapped = position - static_cast<float>(floor_to_int(position * per_tile)) * span;
    const float held = clamp(wrapped, 0.0F, span);
    const auto whole = static_cast<int32_t>(held);
    const int32_t index = whole >= size ? whole - size : whole;
    return {index, index + 1 == size ? 0 : index + 1, held - static_cast<float>(whole)};
}

constexpr std::size_t run = 256;

struct TileColumns {
    std::array<int32_t, run> left;
    std::array<int32_t, run> right;
    std::array<float, run> part;
};

} // namespace

#define TAVIK_ROWS "tavik/dither/tile_grain_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(int32_t first, float scale, float offset, int32_t size, TileColumns &columns,
                        std::size_t count)>
    tile_columns = TAVIK_EVERY_LEVEL(tile_columns);
constexpr PerLevel<void(const float *top, const float *bottom, const TileColumns &columns, float part_y, float amount,
                        uint8_t *plane, std::size_t count)>
    add_tile_grain = TAVIK_EVERY_LEVEL(add_tile_grain);

} // namespace

TAVIK_EXPORT(void)
xfilmgrainHelper(int32_t width, int32_t height, int32_t grain_width, int32_t grain_height, float scale, float offset_x,
                 float offset_y, float amount, const float *grain_r, const float *grain_g, const float *grain_b,
                 uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const std::array<const float *, 3> grain = {grain_r, grain_g, grain_b};
    const std::array<uint8_t *, 3> planes = {plane_r, plane_g, plane_b};
    const auto rows_span = static_cast<float>(grain_height);
    // Four gathers a sample.
    const int32_t grain_of_loop = std::max(row_grain(width) / 4, 1);
    parallel_for(0, height, grain_of_loop, [&](int32_t begin, int32_t end) {
        TileColumns columns;
        for (int32_t y = begin; y < end; ++y) {
            const TilePosition row =
                position_in_tile(static_cast<float>(y) * scale + offset_y, grain_height, rows_span, 1.0F / rows_span);
            const auto start_of = [grain_width](int32_t index) {
                return static_cast<std::size_t>(index) * static_cast<std::size_t>(grain_width);
            };
            for (std::size_t x = 0; x < element_count(width); x += run) {
                const std::size_t count = std::min(run, element_count(width) - x);
                tile_columns.active()(static_cast<int32_t>(x), scale, offset_x, grain_width, columns, count);
                const std::size_t at = static_cast<std::size_t>(y) * element_count(width) + x;
                for (std::size_t i = 0; i < 3; ++i)
                    add_tile_grain.active()(grain[i] + start_of(row.index), grain[i] + start_of(row.next), columns,
                                            row.part, amount, planes[i] + at, count);
            }
        }
    });
}
