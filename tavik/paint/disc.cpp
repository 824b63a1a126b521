#include "tavik/paint/disc.h"

#include <cmath>
#include <limits>
#include <type_traits>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/paint/paint.h"

#define TAVIK_ROWS "tavik/paint/disc_rows.inl"
#include "tavik/frame/each_level.inl"

namespace tavik {

const PerLevel<PaintDisc<uint8_t>> replace_bytes = TAVIK_EVERY_LEVEL(replace<uint8_t>);
const PerLevel<PaintDisc<float>> replace_floats = TAVIK_EVERY_LEVEL(replace<float>);

Box box_of(const Disc &disc, int32_t x_max, int32_t y_max, RowBelow row_below) {
    // One past the rim's last column is visited, too.
    const int32_t last_column = wrap_add(truncate(disc.radius + disc.cx + disc.feather), 1);
    const int32_t row_past_rim = wrap_add(truncate(disc.radius + disc.cy + disc.feather), 1);
    const int32_t bottom = wrap_add(row_past_rim, row_below == RowBelow::included ? 1 : 0);
    return {.left = std::max(truncate(disc.cx - disc.radius - disc.feather), 0),
            .right = std::min(wrap_add(last_column, 1), x_max),
            .top = std::max(truncate(disc.cy - disc.radius - disc.feather), 0),
            .bottom = std::min(bottom, y_max)};
}

} // namespace tavik

using namespace tavik;

namespace {

constexpr PerLevel<PaintDisc<uint8_t>> add = TAVIK_EVERY_LEVEL(add);
constexpr PerLevel<PaintDisc<uint8_t>> multiply = TAVIK_EVERY_LEVEL(multiply);
constexpr PerLevel<void(const uint8_t *pixels, uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count)> split_pixels =
    TAVIK_EVERY_LEVEL(split_pixels);
constexpr PerLevel<void(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *pixels, std::size_t count)>
    join_pixels = TAVIK_EVERY_LEVEL(join_pixels);
constexpr PerLevel<void(const Disc &disc, const Box &box, const Canvas<float> &canvas, float depth,
                        const float *depths)>
    replace_in_front = TAVIK_EVERY_LEVEL(replace_in_front);

Disc dab(float cx, float cy, float diameter, float feather, float red, float green, float blue, float opacity) {
    return {.cx = cx,
            .cy = cy,
            .radius = diameter * 0.5F,
            .feather = feather,
            .colour = {red, green, blue},
            .opacity = clamp_nan_high(opacity, 0.0F, 1.0F)};
}

template <class Sample>
int32_t paint_serially(PaintDisc<Sample> &paint, const Disc &disc, int32_t y_max, const Canvas<Sample> &canvas) {
    paint_box(paint, disc, box_of(disc, canvas.x_max, y_max, RowBelow::included), canvas);
    return 0;
}

// Calls paint(disc, band, canvas) for bands of rows of the disc's box.
template <class Paint, class Sample>
int32_t paint_by_rows(const Paint &paint, const Disc &disc, int32_t y_max, const Canvas<Sample> &canvas) {
    const Box box = box_of(disc, canvas.x_max, y_max, RowBelow::excluded);
    if (box.empty()) return 0;
    parallel_for(box.top, box.bottom, row_grain(box.right - box.left), [&](int32_t top, int32_t bottom) {
        paint_box(paint, disc, Box{box.left, box.right, top, bottom}, canvas);
    });
    return 0;
}

} // namespace

TAVIK_EXPORT(int32_t)
FeatheredCircle(float cx, float cy, float diameter, float feather, float red, float green, float blue, float opacity,
                int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    return paint_serially(replace_bytes.active(), dab(cx, cy, diameter, feather, red, green, blue, opacity), y_max,
                          Canvas<uint8_t>{x_max, {plane_r, plane_g, plane_b}});
}

TAVIK_EXPORT(void)
brush_preview_helper(uint8_t *row, int32_t count, int32_t y, float cx, float cy, float diameter, float feather,
                     float red, float green, float blue, float opacity, int32_t row_offset) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    const Box box = box_of(disc, count, std::numeric_limits<int32_t>::max(), RowBelow::included);
    if (box.empty() || y < box.top || y >= box.bottom) return;
    constexpr int32_t most = 256;
    std::array<std::array<uint8_t, most + 1>, 3> run; // planes of one row, with the column that is never painted
    auto &[r, g, b] = run;
    for (int32_t x = box.left; x < box.right;) {
        const int32_t columns = std::min(box.right - x, most);
        uint8_t *pixels = row + row_offset + 3 * static_cast<std::ptrdiff_t>(x);
        split_pixels.active()(pixels, r.data(), g.data(), b.data(), static_cast<std::size_t>(columns));
        replace_bytes.active()(disc, {x, x + columns, y, y + 1}, {x + columns, {r.data(), g.data(), b.data()}, x, y});
        join_pixels.active()(r.data(), g.data(), b.data(), pixels, static_cast<std::size_t>(columns));
        x += columns;
    }
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_Add(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                    float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    return paint_serially(add.active(), dab(cx, cy, diameter, feather, red, green, blue, opacity), y_max,
                          Canvas<uint8_t>{x_max, {plane_r, plane_g, plane_b}});
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_Multiply(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                         float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g,
                         uint8_t *plane_b) {
    return paint_serially(multiply.active(), dab(cx, cy, diameter, feather, red, green, blue, opacity), y_max,
                          Canvas<uint8_t>{x_max, {plane_r, plane_g, plane_b}});
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                    float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    return paint_by_rows(replace_bytes.active(), dab(cx, cy, diameter, feather, red, green, blue, opacity), y_max,
                         Canvas<uint8_t>{x_max, {plane_r, plane_g, plane_b}});
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl_float(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                          float opacity, int32_t x_max, int32_t y_max, float *plane_r, float *plane_g, float *plane_b) {
    return paint_by_rows(replace_floats.active(), dab(cx, cy, diameter, feather, red, green, blue, opacity), y_max,
                         Canvas<float>{x_max, {plane_r, plane_g, plane_b}});
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl_float_zbuffer(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                                  float opacity, int32_t x_max, int32_t y_max, float *plane_r, float *plane_g,
                                  float *plane_b, float dab_depth, const float *depth_plane) {
    const auto paint = [&](const Disc &disc, const Box &box, const Canvas<float> &canvas) {
        replace_in_front.active()(disc, box, canvas, dab_depth, depth_plane);
    };
    return paint_by_rows(paint, dab(cx, cy, diameter, feather, red, green, blue, opacity), y_max,
                         Canvas<float>{x_max, {plane_r, plane_g, plane_b}});
}
