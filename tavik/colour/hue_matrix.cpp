#include "tavik/colour/colour.h"
#include "tavik/frame/elementary.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

namespace {

// A circulant matrix: what a channel gets of itself, of the channel before it and of the one after it, in the circle
// of green, blue and red.
struct HueMatrix {
    float same, before, after;

    HueMatrix(float hue, float saturation, float value) {
        const float turns = tavik::degrees_to_turns(hue);
        const float along = saturation * tavik::cos_turn(turns);
        const float across = (saturation * tavik::sin_turn(turns)) * 1.7320508F;
        same = ((1.0F + (along + along)) * value) / 3.0F;
        before = (((1.0F - along) - across) * value) / 3.0F;
        after = (((1.0F - along) + across) * value) / 3.0F;
    }
};

} // namespace

#define TAVIK_ROWS "tavik/colour/hue_matrix_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const HueMatrix &matrix, const float *add, const uint8_t *const src[3], uint8_t *const dst[3],
                        std::size_t count)>
    turn_hue = TAVIK_EVERY_LEVEL(turn_hue);

constexpr float nothing[3] = {};

auto planes_of(std::size_t count, const uint8_t *const src[3], uint8_t *const dst[3]) {
    return FetchAhead(count, src[0], src[1], src[2], dst[0], dst[1], dst[2]);
}

auto turn_runs(const HueMatrix &matrix, const float *add, const uint8_t *const src[3], uint8_t *const dst[3]) {
    return [=](std::size_t i, std::size_t n) {
        const uint8_t *const from[] = {src[0] + i, src[1] + i, src[2] + i};
        uint8_t *const to[] = {dst[0] + i, dst[1] + i, dst[2] + i};
        turn_hue.active()(matrix, add, from, to, n);
    };
}

} // namespace

TAVIK_EXPORT(void)
TransformHSV(float *red, float *green, float *blue, float hue, float saturation, float value) {
    const HueMatrix m(hue, saturation, value);
    const float r = *red;
    const float g = *green;
    const float b = *blue;
    *red = m.same * r + m.before * g + m.after * b;
    *green = m.after * r + m.same * g + m.before * b;
    *blue = m.before * r + m.after * g + m.same * b;
}

TAVIK_EXPORT(void)
xFastHSV(int32_t width, int32_t height, float hue, float saturation, float value, const uint8_t *src_r,
         const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const uint8_t *const src[] = {src_r, src_g, src_b};
    uint8_t *const dst[] = {dst_r, dst_g, dst_b};
    if (width <= 0) return;
    const std::size_t count = counts(width, height);
    planes_of(count, src, dst).for_all(turn_runs({hue, saturation, value}, nothing, src, dst));
}

TAVIK_EXPORT(void)
FastHSV_ppl(int32_t width, int32_t height, float hue, float saturation, float value, const uint8_t *src_r,
            const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const uint8_t *const src[] = {src_r, src_g, src_b};
    uint8_t *const dst[] = {dst_r, dst_g, dst_b};
    const auto turn = turn_runs({hue, saturation, value}, nothing, src, dst);
    planes_of(counts(width, height), src, dst).for_rows(width, height, turn);
}

TAVIK_EXPORT(void)
FastHSVandRGB(int32_t width, int32_t height, float hue, float saturation, float value, float add_r, float add_g,
              float add_b, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
              uint8_t *dst_g, uint8_t *dst_b) {
    const float add[] = {add_r, add_g, add_b};
    const uint8_t *const src[] = {src_r, src_g, src_b};
    uint8_t *const dst[] = {dst_r, dst_g, dst_b};
    const auto turn = turn_runs({hue, saturation, value}, add, src, dst);
    planes_of(counts(width, height), src, dst).for_rows(width, height, turn);
}
