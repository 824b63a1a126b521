#include <cmath>
#include <cstring>

#include "tavik/frame/parallel_for.h"
#include "tavik/resample/inside_span.h"
#include "tavik/resample/interpolation.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

namespace {

// The source positions of a destination row. Every operation on the column is monotonic, and so are the coordinates.
struct TransformedRow {
    float centre_x;
    float centre_y;
    // Of the terms of x and y: by column, of the row, and constant.
    float x_by_column, x_of_row, x_constant;
    float y_by_column, y_of_row, y_constant;

    TransformedRow(const float *m, float centre_column, float centre_row, int32_t y)
        : centre_x(centre_column),
          centre_y(centre_row),
          x_by_column(m[0]),
          x_of_row(m[4] * (static_cast<float>(y) - centre_row)),
          x_constant(m[12]),
          y_by_column(m[1]),
          y_of_row(m[5] * (static_cast<float>(y) - centre_row)),
          y_constant(m[13]) {}

    float source_x(int32_t x) const {
        const float dx = static_cast<float>(x) - centre_x;
        return x_by_column * dx + x_of_row + x_constant + centre_x;
    }
    float source_y(int32_t x) const {
        const float dx = static_cast<float>(x) - centre_x;
        return centre_y + (y_of_row + y_by_column * dx + y_constant);
    }

    // Whether no column's coordinates can be NaN.
    bool is_finite() const {
        return std::isfinite(x_by_column + x_of_row + x_constant + centre_x + y_by_column + y_of_row + y_constant +
                             centre_y);
    }
};

// Positions of a run of columns: the index of the sample at or above the left of each, and the fractions.
struct SamplePositions {
    std::array<int32_t, tavik::block_columns> indices;
    std::array<float, tavik::block_columns> x_fractions;
    std::array<float, tavik::block_columns> y_fractions;
};

// Two by two samples, by rows from the low byte.
using Square = uint32_t;

} // namespace

#define TAVIK_ROWS "tavik/resample/free_transform_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const TransformedRow &row, int32_t first, int32_t stride, SamplePositions &positions,
                        std::size_t count)>
    transform_positions = TAVIK_EVERY_LEVEL(transform_positions);
constexpr PerLevel<void(const Square *squares, const SamplePositions &positions, uint8_t *dst, std::size_t count)>
    lerp_squares = TAVIK_EVERY_LEVEL(lerp_squares);

// Which source positions are inside, and how they are sampled.
struct Nearest {
    static bool is_left_of(float x) { return x < 0; }
    static bool is_right_of(float x, float x_max) { return x > x_max; }
    static bool is_above(float y) { return y <= 0; }
    static bool is_below(float y, float y_max) { return y > y_max; }

    static void sample(const uint8_t *src, std::size_t /*stride*/, const SamplePositions &positions, uint8_t *dst,
                       std::size_t count) {
        copy_indexed(src, positions.indices.data(), dst, count);
    }
};

struct Bilinear {
    static bool is_left_of(float x) { return x < 0; }
    static bool is_right_of(float x, float x_max) { return x >= x_max; }
    static bool is_above(float y) { return y < 0; }
    static bool is_below(float y, float y_max) { return y >= y_max; }

    static void sample(const uint8_t *src, std::size_t stride, const SamplePositions &positions, uint8_t *dst,
                       std::size_t count) {
        std::array<Square, block_columns> squares;
        for (std::size_t i = 0; i < count; ++i) {
            uint16_t above = 0;
            uint16_t below = 0;
            std::memcpy(&above, src + positions.indices[i], sizeof above);
            std::memcpy(&below, src + positions.indices[i] + stride, sizeof below);
            squares[i] = above | Square{below} << 16;
        }
        lerp_squares.active()(squares.data(), positions, dst, count);
    }
};

// What is drawn to, in the host's floats.
struct Rectangle {
    float left, right, top, bottom;
    // Added to the right and the bottom before they are truncated.
    float margin;
};

template <std::size_t channels> struct Planes {
    int32_t x_max;
    int32_t y_max;
    std::array<const uint8_t *, channels> src;
    std::array<uint8_t *, channels> dst;
};

template <class Sampling, std::size_t channels>
void draw_row(const TransformedRow &row, ColumnSpan columns, const Planes<channels> &planes, std::size_t dst_start) {
    const auto x_max = static_cast<float>(planes.x_max);
    const auto y_max = static_cast<float>(planes.y_max);
    const auto left_of = [&](int32_t x) { return Sampling::is_left_of(row.source_x(x)); };
    const auto right_of = [&](int32_t x) { return Sampling::is_right_of(row.source_x(x), x_max); };
    const auto above = [&](int32_t x) { return Sampling::is_above(row.source_y(x)); };
    const auto below = [&](int32_t x) { return Sampling::is_below(row.source_y(x), y_max); };
    const std::size_t stride = static_cast<std::size_t>(planes.x_max) + 1;

    const auto draw = [&](ColumnSpan inside) {
        SamplePositions positions;
        for_each_block(inside.end - inside.begin, [&](int32_t first, int32_t end) {
            const auto count = static_cast<std::size_t>(end - first);
            const int32_t column = inside.begin + first;
            transform_positions.active()(row, column, static_cast<int32_t>(stride), positions, count);
            for (std::size_t k = 0; k < channels; ++k)
                Sampling::sample(planes.src[k], stride, positions, planes.dst[k] + dst_start + column, count);
        });
    };
    if (row.is_finite()) {
        draw(between(between(columns, row.x_by_column >= 0, left_of, right_of), row.y_by_column >= 0, above, below));
        return;
    }
    const auto inside = [&](int32_t x) {
        const bool is_number = !std::isnan(row.source_x(x)) && !std::isnan(row.source_y(x));
        return is_number && !left_of(x) && !right_of(x) && !above(x) && !below(x);
    };
    for_each_run(columns, inside, [&](ColumnSpan run, bool is_inside) {
        if (is_inside) draw(run);
    });
}

template <class Sampling, std::size_t channels>
void transform(const Rectangle &to, float centre_x, float centre_y, const float *matrix,
               const Planes<channels> &planes) {
    if (planes.x_max < 0 || planes.y_max < 0) return;
    const auto column = [&](float edge) { return std::clamp(truncate(edge), 0, planes.x_max); };
    const auto row = [&](float edge) { return std::clamp(truncate(edge), 0, planes.y_max); };
    const ColumnSpan columns = {column(to.left), column(to.right + to.margin) + 1};
    parallel_for(row(to.top), row(to.bottom + to.margin), row_grain(columns.end - columns.begin),
                 [&](int32_t begin, int32_t end) {
                     for (int32_t y = begin; y < end; ++y)
                         draw_row<Sampling>(TransformedRow(matrix, centre_x, centre_y, y), columns, planes,
                                            row_start(static_cast<std::size_t>(planes.x_max) + 1, y));
                 });
}

} // namespace

TAVIK_EXPORT(void)
xfreetransformalpha(float left, float right, float top, float bottom, float centre_x, float centre_y, int32_t x_max,
                    int32_t y_max, const uint8_t *src, uint8_t *dst, const float *matrix) {
    transform<Nearest, 1>({left, right, top, bottom, 0.5F}, centre_x, centre_y, matrix, {x_max, y_max, {src}, {dst}});
}

TAVIK_EXPORT(void)
xfreetransformalpha_aa(float left, float right, float top, float bottom, float centre_x, float centre_y, int32_t x_max,
                       int32_t y_max, const uint8_t *src, uint8_t *dst, const float *matrix) {
    transform<Bilinear, 1>({left, right, top, bottom, 0.5F}, centre_x, centre_y, matrix, {x_max, y_max, {src}, {dst}});
}

TAVIK_EXPORT(void)
xfreetransform_aa(float left, float right, float top, float bottom, float centre_x, float centre_y, int32_t x_max,
                  int32_t y_max, const uint8_t *src_a, const uint8_t *src_b, const uint8_t *src_c, const uint8_t *src_d,
                  uint8_t *dst_a, uint8_t *dst_b, uint8_t *dst_c, uint8_t *dst_d, const float *matrix) {
    transform<Bilinear, 4>({left, right, top, bottom, 1.5F}, centre_x, centre_y, matrix,
                           {x_max, y_max, {src_a, src_b, src_c, src_d}, {dst_a, dst_b, dst_c, dst_d}});
}
