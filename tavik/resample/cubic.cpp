#include <cstring>

#include "tavik/frame/parallel_for.h"
#include "tavik/resample/interpolation.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

namespace {

// Four samples beside or above each other, the first in the low byte.
using Quad = uint32_t;

// A block of positions along a row of last + 1 samples.
struct RowPositions : tavik::Positions {
    // Four destination columns are shuffled together from sixteen source bytes where they lie close enough together and
    // far enough from the ends of the row.
    static constexpr std::size_t group = 4;

    int32_t last;
    std::array<uint8_t, 4 * tavik::block_columns> shuffle;
    std::array<bool, tavik::block_columns / group> is_shuffled;

    RowPositions(int32_t first, int32_t end, float scale, int32_t last_sample)
        : Positions(first, end, scale), last(last_sample) {
        for (std::size_t x = 0; x + group <= count; x += group) {
            const int32_t begin = whole[x] - 1;
            bool is_near = begin >= 0 && begin <= last - 15;
            for (std::size_t i = x; i < x + group; ++i) {
                const int64_t offset = int64_t{whole[i]} - whole[x];
                is_near = is_near && offset >= 0 && offset <= 12;
                for (std::size_t tap = 0; tap < 4; ++tap) shuffle[4 * i + tap] = tavik::low_byte(offset + tap);
            }
            is_shuffled[x / group] = is_near;
        }
    }
};

using FourRows = std::array<const uint8_t *, 4>;

} // namespace

#define TAVIK_ROWS "tavik/resample/cubic_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *row, const RowPositions &positions, Quad *quads)> collect_quads =
    TAVIK_EVERY_LEVEL(collect_quads);
constexpr PerLevel<void(const Quad *quads, const float *fractions, uint8_t *dst, std::size_t count)> cubic_of_quads =
    TAVIK_EVERY_LEVEL(cubic_of_quads);
constexpr PerLevel<void(const FourRows &rows, float fraction, uint8_t *dst, std::size_t count)> cubic_of_rows =
    TAVIK_EVERY_LEVEL(cubic_of_rows);
constexpr PerLevel<void(const FourRows &rows, float fraction, float *values, std::size_t count)> bicubic_columns =
    TAVIK_EVERY_LEVEL(bicubic_columns);
constexpr PerLevel<void(const float *values, const int32_t *places, const float *fractions, uint8_t *dst,
                        std::size_t count)>
    bicubic_row = TAVIK_EVERY_LEVEL(bicubic_row);

// A block of destination columns and the source columns it is made of. Each destination column takes four values that
// stand beside each other: in a run of source columns, the edge ones repeated, or where the run would be long, in a
// list of four for each.
class BicubicColumns {
  public:
    BicubicColumns(int32_t first, int32_t end, float scale, int32_t last_column)
        : positions(first, end, scale), last(std::max(last_column, 0)) {
        const auto [lowest, highest] =
            std::minmax_element(positions.whole.begin(), positions.whole.begin() + positions.count);
        run_begin = wrap_sub(*lowest, 1);
        run_length = int64_t{*highest} - *lowest + 4;
        // Positions next to the ends of the 32-bit range wrap around.
        is_run = run_length <= most_values && run_begin < *lowest && *highest < far_away;
        for (std::size_t x = 0; x < positions.count; ++x) {
            places[x] = is_run ? positions.whole[x] - *lowest : static_cast<int32_t>(4 * x);
            for (std::size_t tap = 0; tap < 4 && !is_run; ++tap)
                listed[4 * x + tap] = clamped(wrap_add(positions.whole[x], static_cast<int32_t>(tap) - 1));
        }
    }

    void resize_row(const FourRows &rows, float fraction, uint8_t *dst) const {
        // With room for a vector that begins at one of the last values.
        std::array<float, most_values + 16> values;
        if (is_run)
            interpolate_run(rows, fraction, values.data());
        else
            interpolate_listed(rows, fraction, values.data());
        bicubic_row.active()(values.data(), places.data(), positions.fraction.data(), dst, positions.count);
    }

  private:
    static constexpr int32_t most_values = 4 * block_columns;
    static constexpr int32_t far_away = 1 << 30;

    int32_t clamped(int32_t column) const { return std::clamp(column, 0, last); }

    void interpolate_run(const FourRows &rows, float fraction, float *values) const {
        const int32_t run_last = run_begin + static_cast<int32_t>(run_length) - 1;
        const int32_t first = clamped(run_begin);
        const std::size_t count = static_cast<std::size_t>(clamped(run_last) - first) + 1;
        const auto length = static_cast<std::size_t>(run_length);
        // Repeats of the first column, the columns, repeats of the last one.
        const std::size_t before = std::min(static_cast<std::size_t>(std::max(first - run_begin, 0)), length - count);
        bicubic_columns.active()({rows[0] + first, rows[1] + first, rows[2] + first, rows[3] + first}, fraction,
                                 values + before, count);
        std::fill_n(values, before, values[before]);
        std::fill_n(values + before + count, length - before - count, values[before + count - 1]);
    }

    void interpolate_listed(const FourRows &rows, float fraction, float *values) const {
        std::array<std::array<uint8_t, most_values>, 4> picked;
        const std::size_t count = 4 * positions.count;
        for (std::size_t row = 0; row < rows.size(); ++row)
            for (std::size_t i = 0; i < count; ++i) picked[row][i] = rows[row][listed[i]];
        bicubic_columns.active()({picked[0].data(), picked[1].data(), picked[2].data(), picked[3].data()}, fraction,
                                 values, count);
    }

    Positions positions;
    int32_t last;
    int32_t run_begin;
    int64_t run_length;
    bool is_run;
    std::array<int32_t, block_columns> places;
    std::array<int32_t, most_values> listed;
};

} // namespace

TAVIK_EXPORT(void)
DoCubicPass1Helper(const uint8_t *src, uint8_t *dst, int32_t dst_x_max, int32_t /*first_ignored*/, int32_t src_x_max,
                   int32_t row_count, float x_scale, int32_t /*last_ignored*/) {
    if (dst_x_max < 0) return;
    const std::size_t src_stride = static_cast<std::size_t>(src_x_max) + 1;
    const std::size_t dst_stride = static_cast<std::size_t>(dst_x_max) + 1;
    parallel_for(0, row_count, row_grain(dst_x_max), [&](int32_t begin, int32_t end) {
        for_each_block(wrap_add(dst_x_max, 1), [&](int32_t first_column, int32_t end_column) {
            const RowPositions positions(first_column, end_column, x_scale, src_x_max);
            std::array<Quad, block_columns> quads;
            for (int32_t r = begin; r < end; ++r) {
                collect_quads.active()(src + row_start(src_stride, r), positions, quads.data());
                cubic_of_quads.active()(quads.data(), positions.fraction.data(),
                                        dst + row_start(dst_stride, r) + first_column, positions.count);
            }
        });
    });
}

TAVIK_EXPORT(void)
DoCubicPass2Helper(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t dst_row_count, int32_t /*first_ignored*/,
                   int32_t src_y_max, float /*last_ignored*/, float y_scale) {
    if (x_max < 0) return;
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    parallel_for(0, dst_row_count, row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t r = begin; r < end; ++r) {
            const Position position(r, y_scale);
            const auto clamped = [&](int32_t offset) {
                return src + row_start(stride, std::clamp(wrap_add(position.whole, offset), 0, src_y_max));
            };
            const uint8_t *middle = src + static_cast<std::ptrdiff_t>(stride) * position.whole;
            cubic_of_rows.active()({clamped(-1), middle, clamped(1), clamped(2)}, position.fraction,
                                   dst + row_start(stride, r), stride);
        }
    });
}

TAVIK_EXPORT(void)
xBiCubicHelper(const uint8_t *src, uint8_t *dst, int32_t dst_width, int32_t dst_height, int32_t src_width,
               int32_t src_height, float x_scale, float y_scale) {
    if (dst_width < 1) return;
    const auto src_stride = static_cast<std::size_t>(src_width);
    const auto dst_stride = static_cast<std::size_t>(dst_width);
    parallel_for(0, dst_height, row_grain(dst_width), [&](int32_t begin, int32_t end) {
        for_each_block(dst_width, [&](int32_t first_column, int32_t end_column) {
            const BicubicColumns columns(first_column, end_column, x_scale, src_width - 2);
            for (int32_t r = begin; r < end; ++r) {
                const Position position(r, y_scale);
                const auto row = [&](int32_t offset) {
                    const int32_t clamped = std::min(wrap_add(position.whole, offset), src_height - 2);
                    return src + row_start(src_stride, std::max(clamped, 0));
                };
                columns.resize_row({row(-1), row(0), row(1), row(2)}, position.fraction,
                                   dst + row_start(dst_stride, r) + first_column);
            }
        });
    });
}
