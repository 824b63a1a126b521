#include <limits>

#include "tavik/frame/parallel_for.h"
#include "tavik/resample/inside_span.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

namespace {

// Along a destination row both fixed-point coordinates of the source change by a constant. Sums and products wrap
// around, so that adding the constant gives what multiplying by the column gives.
struct RotatedRow {
    uint32_t x_at_middle;
    uint32_t y_at_middle;
    uint32_t x_step;
    uint32_t y_step;
    int32_t src_x_middle;
    int32_t src_y_middle;

    int32_t source_x(int32_t x) const {
        return (static_cast<int32_t>(x_at_middle + x_step * static_cast<uint32_t>(x)) >> 16) + src_x_middle;
    }
    int32_t source_y(int32_t x) const {
        return (static_cast<int32_t>(y_at_middle + y_step * static_cast<uint32_t>(x)) >> 16) + src_y_middle;
    }
};

} // namespace

#define TAVIK_ROWS "tavik/resample/rotate_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const RotatedRow &row, int32_t first, int32_t stride, int32_t *indices, std::size_t count)>
    rotated_indices = TAVIK_EVERY_LEVEL(rotated_indices);

// Whether a coordinate, which is `at_middle` in column 0, stays clear of the wrap-around from column `first` to `last`.
bool stays_in_range(uint32_t at_middle, uint32_t step, int32_t first, int32_t last) {
    const auto fits = [&](int32_t x) {
        const int64_t value = int64_t{static_cast<int32_t>(step)} * x + static_cast<int32_t>(at_middle);
        return value == static_cast<int32_t>(value);
    };
    return fits(first) && fits(last);
}

// Columns of a destination row whose sources are inside, and where the row's column 0 is in its plane.
struct InsidePart {
    RotatedRow row;
    ColumnSpan columns;
    std::size_t middle;
};

// One plane for each channel.
template <std::size_t channels> struct Planes {
    std::array<const uint8_t *, channels> src;
    std::array<uint8_t *, channels> dst;
    std::array<uint8_t, channels> background;
};

// Copies parts of neighbouring rows, which read the same part of the source, in tiles and one channel after the other.
template <std::size_t channels> class TiledCopy {
  public:
    TiledCopy(const Planes<channels> &all_planes, int32_t src_stride) : planes(all_planes), stride(src_stride) {}
    ~TiledCopy() { copy(); }
    TiledCopy(const TiledCopy &) = delete;
    TiledCopy &operator=(const TiledCopy &) = delete;

    void add(const InsidePart &part) {
        parts[count++] = part;
        if (count == parts.size()) copy();
    }

  private:
    static constexpr int32_t tile_columns = 256;

    void copy() {
        int32_t first = std::numeric_limits<int32_t>::max();
        int32_t last = std::numeric_limits<int32_t>::min();
        for (std::size_t i = 0; i < count; ++i) {
            first = std::min(first, parts[i].columns.begin);
            last = std::max(last, parts[i].columns.end);
        }
        for (; first < last; first += tile_columns) copy_tile({first, std::min(first + tile_columns, last)});
        count = 0;
    }

    void copy_tile(ColumnSpan tile) {
        std::array<ColumnSpan, tile_rows> columns;
        std::array<std::array<int32_t, tile_columns>, tile_rows> indices;
        for (std::size_t i = 0; i < count; ++i) {
            const int32_t begin = std::max(tile.begin, parts[i].columns.begin);
            columns[i] = {begin, std::max(begin, std::min(tile.end, parts[i].columns.end))};
            rotated_indices.active()(parts[i].row, begin, stride, indices[i].data(),
                                     static_cast<std::size_t>(columns[i].end - begin));
        }
        for (std::size_t k = 0; k < channels; ++k)
            for (std::size_t i = 0; i < count; ++i)
                copy_indexed(planes.src[k], indices[i].data(), planes.dst[k] + (parts[i].middle + columns[i].begin),
                             static_cast<std::size_t>(columns[i].end - columns[i].begin));
    }

    static constexpr std::size_t tile_rows = 16;

    const Planes<channels> &planes;
    int32_t stride;
    std::array<InsidePart, tile_rows> parts;
    std::size_t count = 0;
};

class Rotation {
  public:
    Rotation(int32_t src_x_bound, int32_t src_y_bound, int32_t dst_x_bound, int32_t dst_y_bound, float zoom,
             float cosine, float sine)
        : src_x_max(src_x_bound),
          src_y_max(src_y_bound),
          dst_x_max(dst_x_bound),
          half_width(dst_x_bound / 2),
          half_height(dst_y_bound / 2),
          fixed_cosine(fixed(cosine)),
          fixed_sine(fixed(sine)),
          fixed_zoom(fixed(1.0F / zoom)) {}

    template <std::size_t channels> void draw(const Planes<channels> &planes) const {
        if (half_width <= 0) return;
        parallel_for(-half_height, half_height, row_grain(2 * half_width), [&](int32_t begin, int32_t end) {
            TiledCopy<channels> inside_parts(planes, wrap_add(src_x_max, 1));
            for (int32_t y = begin; y < end; ++y) {
                const RotatedRow row = row_at(y);
                const std::size_t middle = row_start(static_cast<std::size_t>(dst_x_max) + 1, y + half_height) +
                                           static_cast<std::size_t>(half_width);
                for_each_part(row, [&](ColumnSpan columns, bool is_inside) {
                    const auto count = static_cast<std::size_t>(columns.end - columns.begin);
                    if (is_inside) inside_parts.add({row, columns, middle});
                    for (std::size_t k = 0; k < channels && !is_inside; ++k)
                        std::memset(planes.dst[k] + (middle + columns.begin), planes.background[k], count);
                });
            }
        });
    }

  private:
    static uint32_t fixed(float value) { return static_cast<uint32_t>(truncate(value * 255.0F)); }

    RotatedRow row_at(int32_t y) const {
        const auto row = static_cast<uint32_t>(y);
        return {(0 - fixed_sine * row) * fixed_zoom,
                fixed_cosine * row * fixed_zoom,
                fixed_cosine * fixed_zoom,
                fixed_sine * fixed_zoom,
                src_x_max / 2,
                src_y_max / 2};
    }

    // Calls body(columns, is_inside) for the parts of a row outside and inside the source.
    template <class Body> void for_each_part(const RotatedRow &row, const Body &body) const {
        const ColumnSpan all = {-half_width, half_width};
        if (!stays_in_range(row.x_at_middle, row.x_step, all.begin, all.end) ||
            !stays_in_range(row.y_at_middle, row.y_step, all.begin, all.end)) {
            const auto inside = [&](int32_t x) {
                const int32_t sx = row.source_x(x);
                const int32_t sy = row.source_y(x);
                return sx >= 0 && sx < src_x_max && sy >= 0 && sy < src_y_max;
            };
            for_each_run(all, inside, body);
            return;
        }
        const ColumnSpan inside_x = between(
            all, static_cast<int32_t>(row.x_step) >= 0, [&](int32_t x) { return row.source_x(x) < 0; },
            [&](int32_t x) { return row.source_x(x) >= src_x_max; });
        const ColumnSpan inside = between(
            inside_x, static_cast<int32_t>(row.y_step) >= 0, [&](int32_t x) { return row.source_y(x) < 0; },
            [&](int32_t x) { return row.source_y(x) >= src_y_max; });
        body(ColumnSpan{all.begin, inside.begin}, false);
        if (inside.begin < inside.end) body(inside, true);
        body(ColumnSpan{inside.end, all.end}, false);
    }

    int32_t src_x_max;
    int32_t src_y_max;
    int32_t dst_x_max;
    int32_t half_width;
    int32_t half_height;
    uint32_t fixed_cosine;
    uint32_t fixed_sine;
    uint32_t fixed_zoom;
};

} // namespace

TAVIK_EXPORT(void)
FasterScaleRotate(const uint8_t *src_a, const uint8_t *src_b, const uint8_t *src_c, const uint8_t *src_d,
                  uint8_t *dst_a, uint8_t *dst_b, uint8_t *dst_c, uint8_t *dst_d, int32_t src_x_max, int32_t src_y_max,
                  int32_t dst_x_max, int32_t dst_y_max, float zoom, float cosine, float sine, int32_t back_a,
                  int32_t back_b, int32_t back_c) {
    const Rotation rotation(src_x_max, src_y_max, dst_x_max, dst_y_max, zoom, cosine, sine);
    rotation.draw<4>({{src_a, src_b, src_c, src_d},
                      {dst_a, dst_b, dst_c, dst_d},
                      {low_byte(back_a), low_byte(back_b), low_byte(back_c), 0}});
}

TAVIK_EXPORT(void)
ScaleRotate_8_noAA(const uint8_t *src, uint8_t *dst, int32_t src_x_max, int32_t src_y_max, int32_t dst_x_max,
                   int32_t dst_y_max, float zoom, float cosine, float sine) {
    const Rotation rotation(src_x_max, src_y_max, dst_x_max, dst_y_max, zoom, cosine, sine);
    rotation.draw<1>({{src}, {dst}, {0}});
}
