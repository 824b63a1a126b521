#include "tavik/colour/hsv.h"

#include <cmath>

#include "tavik/colour/colour.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/size_form.h"

namespace {

struct HueTurn {
    float shift;
    float saturation_scale;
    float value_scale;
};

} // namespace

#define TAVIK_ROWS "tavik/colour/hue_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const HueTurn &turn, uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count)> turn_hue =
    TAVIK_EVERY_LEVEL(turn_hue);

} // namespace

TAVIK_EXPORT(void) RGB_To_HSV(float r, float g, float b, float *hue, float *saturation, float *value) {
    rgb_to_hsv(r, g, b, *hue, *saturation, *value);
}

TAVIK_EXPORT(void) HSV_To_RGB(float *r, float *g, float *b, float h, float s, float v) {
    hsv_to_rgb(h, s, v, *r, *g, *b);
}

TAVIK_EXPORT(void) Saturate(int32_t *r, int32_t *g, int32_t *b) {
    for (int32_t *value : {r, g, b}) *value = clamp_to_byte(*value);
}

TAVIK_EXPORT(void)
xHue(int32_t x_max, int32_t y_max, float hue_shift, float saturation_scale, float value_scale, uint8_t *r, uint8_t *g,
     uint8_t *b) {
    const std::size_t count = upper_bounds(x_max, y_max);
    const HueTurn turn = {hue_shift, saturation_scale, value_scale};
    auto &row = row_in_order(turn_hue, {r, g, b}, count);
    FetchAhead(count, r, g, b).for_all([&](std::size_t i, std::size_t n) { row(turn, r + i, g + i, b + i, n); });
}
