#include "tavik/paint/disc.h"

#include <cmath>
#include <type_traits>

#include "tavik/frame/parallel_for.h"
#include "tavik/paint/fast_root.h"
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

int32_t disc_row_grain(const Box &box) { return row_grain(box.right - box.left); }

} // namespace tavik

using namespace tavik;

namespace {

constexpr PerLevel<PaintDisc<uint8_t>> add = TAVIK_EVERY_LEVEL(add);
constexpr PerLevel<PaintDisc<uint8_t>> multiply = TAVIK_EVERY_LEVEL(multiply);
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

// Calls paint_box(box) for the box of a disc.
template <class PaintBox>
int32_t paint_serially(const Disc &disc, int32_t x_max, int32_t y_max, const PaintBox &paint_box) {
    const Box box = box_of(disc, x_max, y_max, RowBelow::included);
    if (!box.empty()) paint_box(box);
    return 0;
}

// Calls paint_box(band) for bands of rows of a disc's box.
template <class PaintBox>
int32_t paint_by_rows(const Disc &disc, int32_t x_max, int32_t y_max, const PaintBox &paint_box) {
    const Box box = box_of(disc, x_max, y_max, RowBelow::excluded);
    if (box.empty()) return 0;
    parallel_for(box.top, box.bottom, disc_row_grain(box), [&](int32_t top, int32_t bottom) {
        paint_box(Box{box.left, box.right, top, bottom});
    });
    return 0;
}

} // namespace

TAVIK_EXPORT(int32_t)
FeatheredCircle(float cx, float cy, float diameter, float feather, float red, float green, float blue, float opacity,
                int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    return paint_serially(disc, x_max, y_max, [&](const Box &box) {
        replace_bytes.active()(disc, box, {x_max, {plane_r, plane_g, plane_b}});
    });
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_Add(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                    float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    return paint_serially(disc, x_max, y_max, [&](const Box &box) {
        add.active()(disc, box, {x_max, {plane_r, plane_g, plane_b}});
    });
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_Multiply(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                         float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g,
                         uint8_t *plane_b) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    return paint_serially(disc, x_max, y_max, [&](const Box &box) {
        multiply.active()(disc, box, {x_max, {plane_r, plane_g, plane_b}});
    });
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                    float opacity, int32_t x_max, int32_t y_max, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    return paint_by_rows(disc, x_max, y_max, [&](const Box &box) {
        replace_bytes.active()(disc, box, {x_max, {plane_r, plane_g, plane_b}});
    });
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl_float(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                          float opacity, int32_t x_max, int32_t y_max, float *plane_r, float *plane_g, float *plane_b) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    return paint_by_rows(disc, x_max, y_max, [&](const Box &box) {
        replace_floats.active()(disc, box, {x_max, {plane_r, plane_g, plane_b}});
    });
}

TAVIK_EXPORT(int32_t)
FeatheredCircle_ppl_float_zbuffer(float cx, float cy, float diameter, float feather, float red, float green, float blue,
                                  float opacity, int32_t x_max, int32_t y_max, float *plane_r, float *plane_g,
                                  float *plane_b, float dab_depth, const float *depth_plane) {
    const Disc disc = dab(cx, cy, diameter, feather, red, green, blue, opacity);
    return paint_by_rows(disc, x_max, y_max, [&](const Box &box) {
        replace_in_front.active()(disc, box, {x_max, {plane_r, plane_g, plane_b}}, dab_depth, depth_plane);
    });
}
