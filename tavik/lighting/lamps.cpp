#include <algorithm>
#include <array>
#include <cmath>

#include "tavik/frame/elementary.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/frame/vector.h"
#include "tavik/lighting/lighting.h"

namespace {

using namespace tavik;

constexpr int32_t floats_per_lamp = 12;

// A point-light record.
struct Lamp {
    Vector position;
    std::array<float, 3> diffuse, specular;
    float diffuse_intensity, specular_intensity, shininess;

    explicit Lamp(const float *record)
        : position(load_vector(record)),
          diffuse{record[3], record[4], record[5]},
          specular{record[7], record[8], record[9]},
          diffuse_intensity(record[6]),
          specular_intensity(record[10]),
          shininess(record[11]) {}
};

constexpr std::size_t run = 256;

// The light on a run of pixels.
struct LitPixels {
    std::array<std::array<float, run>, 3> diffuse, specular;
};

} // namespace

#define TAVIK_ROWS "tavik/lighting/lamps_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const Lamp &lamp, int32_t first, float y, float height_scale, const float *heights,
                        const float *normals, LitPixels &lit, std::size_t count)>
    add_lamp = TAVIK_EVERY_LEVEL(add_lamp);
constexpr PerLevel<void(const float *diffuse, const float *specular, const uint8_t *src, uint8_t *dst,
                        std::size_t count)>
    reflect = TAVIK_EVERY_LEVEL(reflect);

} // namespace

TAVIK_EXPORT(void)
xLighting(int32_t width, int32_t height, float ambient, float height_scale, const float *lights, int32_t light_count,
          const float *heights, const float *normals, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
          uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const std::array<const uint8_t *, 3> src = {src_r, src_g, src_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    const std::size_t columns = element_count(width);
    const int32_t grain = std::max(row_grain(width) / (16 * std::clamp(light_count, 1, 1000)), 1);
    parallel_for(0, height, grain, [&](int32_t begin, int32_t end) {
        LitPixels lit;
        for (int32_t y = begin; y < end; ++y) {
            for (std::size_t x = 0; x < columns; x += run) {
                const std::size_t count = std::min(run, columns - x);
                const std::size_t at = static_cast<std::size_t>(y) * columns + x;
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    lit.diffuse[channel].fill(ambient);
                    lit.specular[channel].fill(0);
                }
                for (int32_t i = 0; i < light_count; ++i) {
                    const Lamp lamp(lights + static_cast<std::ptrdiff_t>(i) * floats_per_lamp);
                    if (lamp.diffuse_intensity > 0)
                        add_lamp.active()(lamp, static_cast<int32_t>(x), static_cast<float>(y), height_scale,
                                          heights + at, normals + 3 * at, lit, count);
                }
                for (std::size_t channel = 0; channel < 3; ++channel)
                    reflect.active()(lit.diffuse[channel].data(), lit.specular[channel].data(), src[channel] + at,
                                     dst[channel] + at, count);
            }
        }
    });
}
