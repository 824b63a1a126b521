#include "tavik/frame/elementary.h"
#include "tavik/lighting/lighting.h"
#include "tavik/lighting/relief.h"

namespace {

using namespace tavik;

struct GreyShading {
    Vector light;
    float scale, ambient, rest;
};

struct GlossyShading {
    Vector light, half;
    float scale, ambient, rest, gloss, shininess;
};

} // namespace

#define TAVIK_ROWS "tavik/lighting/relief_shading_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

template <class Sample>
using ColourRow = void(const ReliefRows<Sample> &rows, const GlossyShading &shading, const Sample *const src[3],
                       Sample *const dst[3]);

constexpr PerLevel<void(const ReliefRows<uint8_t> &rows, const GreyShading &shading, uint8_t *dst)> shade_grey =
    TAVIK_EVERY_LEVEL(shade_grey);
constexpr PerLevel<ColourRow<uint8_t>> shade_colours = TAVIK_EVERY_LEVEL(shade_colours);
constexpr PerLevel<ColourRow<float>> shade_float_colours = TAVIK_EVERY_LEVEL(shade_float_colours);

Vector normalized(Vector v) { return v * (1.0F / length(v)); }

GlossyShading glossy(float scale, Vector light, float ambient, float specular, float shininess) {
    const Vector direction = normalized(light);
    // Halfway to the view, which is (0, 0, 1).
    const Vector half = {direction.x, direction.y, direction.z + 1.0F};
    return {direction, normalized(half), scale, ambient, 1.0F - ambient, specular * 255.0F, shininess};
}

template <class Sample>
void shade_picture(const PerLevel<ColourRow<Sample>> &row, int32_t width, int32_t height, const GlossyShading &shading,
                   const Sample *heights, const Sample *const src[3], Sample *const dst[3]) {
    for_each_relief_row(width, height, heights, [&](const ReliefRows<Sample> &rows, std::size_t start) {
        const Sample *const from[] = {src[0] + start, src[1] + start, src[2] + start};
        Sample *const to[] = {dst[0] + start, dst[1] + start, dst[2] + start};
        row.active()(rows, shading, from, to);
    });
}

} // namespace

TAVIK_EXPORT(void)
CPU_hightmap_r2(int32_t width, int32_t height, float scale, float light_x, float light_y, float light_z, float ambient,
                const uint8_t *heights, uint8_t *dst) {
    const GreyShading shading = {normalized({light_x, light_y, light_z}), scale * 0.5F, ambient, 1.0F - ambient};
    for_each_relief_row(width, height, heights, [&](const ReliefRows<uint8_t> &rows, std::size_t start) {
        shade_grey.active()(rows, shading, dst + start);
    });
}

TAVIK_EXPORT(void)
CPU_hightmap_r3(int32_t width, int32_t height, float scale, float light_x, float light_y, float light_z, float ambient,
                float specular, float shininess, const uint8_t *heights, const uint8_t *src_r, const uint8_t *src_g,
                const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const uint8_t *const src[] = {src_r, src_g, src_b};
    uint8_t *const dst[] = {dst_r, dst_g, dst_b};
    shade_picture(shade_colours, width, height,
                  glossy(scale, {light_x, light_y, light_z}, ambient, specular, shininess), heights, src, dst);
}

TAVIK_EXPORT(void)
CPU_hightmap_r3_float(int32_t width, int32_t height, float scale, float light_x, float light_y, float light_z,
                      float ambient, float specular, float shininess, const float *heights, const float *src_r,
                      const float *src_g, const float *src_b, float *dst_r, float *dst_g, float *dst_b) {
    const float *const src[] = {src_r, src_g, src_b};
    float *const dst[] = {dst_r, dst_g, dst_b};
    shade_picture(shade_float_colours, width, height,
                  glossy(scale, {light_x, light_y, light_z}, ambient, specular, shininess), heights, src, dst);
}
