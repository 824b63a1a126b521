#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "tavik/frame/elementary.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/sampling.h"
#include "tavik/frame/size_form.h"
#include "tavik/lighting/lighting.h"

namespace {

using namespace tavik;

struct Ball {
    float centre_x, centre_y, radius, inverse_radius;
    float index, eta; // refractive index, and 1 / index
    float depth, rim;
    float reflectance; // of a ray straight from the front

    Ball(float cx, float cy, float ball_radius, float refractive_index, float centre_depth, float rim_light)
        : centre_x(cx),
          centre_y(cy),
          radius(ball_radius),
          inverse_radius(1.0F / ball_radius),
          index(refractive_index),
          eta(1.0F / refractive_index),
          depth(centre_depth),
          rim(rim_light) {
        const float root = (index - 1.0F) / (index + 1.0F);
        reflectance = root * root;
    }
};

struct RefractedPixels {
    std::array<float, sampling_run> x, y, cover, reflected;
};

struct BubbleShadow {
    float centre_x, centre_y, inverse_radius;
    float outer; // where the shadow ends, in radii
    float slope, opacity, focus;
};

} // namespace

#define TAVIK_ROWS "tavik/lighting/ball_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<bool(const Ball &ball, int32_t first, int32_t y, RefractedPixels &pixels, std::size_t count)>
    refract = TAVIK_EVERY_LEVEL(refract);
constexpr PerLevel<void(const RefractedPixels &pixels, const float *samples, float tint, const uint8_t *src,
                        uint8_t *dst, std::size_t count)>
    mix_refracted = TAVIK_EVERY_LEVEL(mix_refracted);
constexpr PerLevel<void(const BubbleShadow &shadow, int32_t y, uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count)>
    cast_bubble_shadow = TAVIK_EVERY_LEVEL(cast_bubble_shadow);

} // namespace

TAVIK_EXPORT(void)
SphereInnards(int32_t width, int32_t height, float cx, float cy, float radius, float index, float depth, float tint_r,
              float tint_g, float tint_b, float rim, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
              uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const Ball ball(cx, cy, radius, index, depth, rim);
    const std::array<float, 3> tints = {tint_r * unit_per_byte, tint_g * unit_per_byte, tint_b * unit_per_byte};
    const std::array<const uint8_t *, 3> src = {src_r, src_g, src_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    const std::size_t columns = element_count(width);
    parallel_for(0, height, std::max(row_grain(width) / 16, 1), [&](int32_t begin, int32_t end) {
        RefractedPixels pixels;
        std::array<float, sampling_run> samples;
        for (int32_t y = begin; y < end; ++y) {
            for (std::size_t x = 0; x < columns; x += sampling_run) {
                const std::size_t count = std::min(sampling_run, columns - x);
                const std::size_t at = static_cast<std::size_t>(y) * columns + x;
                const bool covers = refract.active()(ball, static_cast<int32_t>(x), y, pixels, count);
                for (std::size_t plane = 0; plane < 3; ++plane) {
                    if (!covers) {
                        std::memcpy(dst[plane] + at, src[plane] + at, count);
                        continue;
                    }
                    sample_bilinear.active()(src[plane], width, height, pixels.x.data(), pixels.y.data(),
                                             samples.data(), count);
                    mix_refracted.active()(pixels, samples.data(), tints[plane], src[plane] + at, dst[plane] + at,
                                           count);
                }
            }
        }
    });
}

TAVIK_EXPORT(void)
xBubbleShadow(int32_t width, int32_t height, float cx, float cy, float radius, float softness, float opacity,
              float focus, uint8_t *plane_r, uint8_t *plane_g, uint8_t *plane_b) {
    if (width <= 0) return;
    const BubbleShadow shadow = {cx, cy, 1.0F / radius, 1.0F + softness, 0.5F / softness, opacity, focus};
    const std::size_t columns = element_count(width);
    parallel_for(0, height, std::max(row_grain(width) / 4, 1), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            const std::size_t start = static_cast<std::size_t>(y) * columns;
            cast_bubble_shadow.active()(shadow, y, plane_r + start, plane_g + start, plane_b + start, columns);
        }
    });
}
