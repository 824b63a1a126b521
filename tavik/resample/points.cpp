#include "tavik/frame/parallel_for.h"
#include "tavik/resample/interpolation.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

#define TAVIK_ROWS "tavik/resample/points_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const float *points, const int32_t *whole, const float *fractions, float *values,
                        std::size_t count)>
    lerp_points_along_row = TAVIK_EVERY_LEVEL(lerp_points_along_row);
constexpr PerLevel<void(const float *top, const float *bottom, float fraction, float *dst, std::size_t count)>
    lerp_rows = TAVIK_EVERY_LEVEL(lerp_rows);

float scale_of(int32_t dst_bound, int32_t src_bound) {
    return 1.0F / (static_cast<float>(dst_bound) / static_cast<float>(src_bound));
}

using PointBlock = std::array<float, 2 * block_columns>;

// A source row at the positions of a block of columns, worked out again only when another row is asked for.
class RowOfPoints {
  public:
    RowOfPoints(const float *plane, std::size_t row_stride, const Positions &block_positions)
        : points(plane), stride(row_stride), positions(block_positions) {}

    const float *at(std::ptrdiff_t row) {
        if (row != held_row) {
            held_row = row;
            lerp_points_along_row.active()(points + 2 * static_cast<std::ptrdiff_t>(stride) * row,
                                           positions.whole.data(), positions.fraction.data(), values.data(),
                                           positions.count);
        }
        return values.data();
    }

  private:
    const float *points;
    std::size_t stride;
    const Positions &positions;
    std::ptrdiff_t held_row = -1;
    PointBlock values;
};

} // namespace

TAVIK_EXPORT(void)
xBilinearScalePointf(int32_t dst_x_max, int32_t dst_y_max, int32_t src_x_max, int32_t src_y_max, const float *src,
                     float *dst) {
    if (dst_x_max < 1) return;
    const float x_scale = scale_of(dst_x_max, src_x_max);
    const float y_scale = scale_of(dst_y_max, src_y_max);
    const std::size_t src_stride = static_cast<std::size_t>(src_x_max) + 1;
    const std::size_t dst_stride = static_cast<std::size_t>(dst_x_max) + 1;
    parallel_for(0, dst_y_max, row_grain(dst_x_max), [&](int32_t begin, int32_t end) {
        for_each_block(dst_x_max, [&](int32_t first, int32_t block_end) {
            const Positions positions(first, block_end, x_scale);
            // Rows take turns, so that the lower one of a pair is kept as the upper one of the next.
            std::array<RowOfPoints, 2> rows = {RowOfPoints(src, src_stride, positions),
                                               RowOfPoints(src, src_stride, positions)};
            for (int32_t y = begin; y < end; ++y) {
                const Position position(y, y_scale);
                const auto odd = static_cast<std::size_t>(position.whole) % 2;
                const float *top = rows[odd].at(position.whole);
                const float *bottom = rows[1 - odd].at(std::ptrdiff_t{position.whole} + 1);
                lerp_rows.active()(top, bottom, position.fraction, dst + 2 * (row_start(dst_stride, y) + first),
                                   2 * positions.count);
            }
        });
    });
}
