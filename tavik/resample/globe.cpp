#include <cmath>

#include "tavik/frame/elementary.h"
#include "tavik/frame/sampling.h"
#include "tavik/resample/resample.h"

namespace {

using namespace tavik;

struct Globe {
    float centre_x, centre_y, radius;
    float per_pixel;    // 1 / radius
    float longitude;    // of the middle, in turns
    float sine, cosine; // of the latitude of the middle
    float map_columns, map_rows_per_turn;
};

} // namespace

#define TAVIK_ROWS "tavik/resample/globe_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<bool(const Globe &globe, const PixelRun &run, float *cover)> cover_globe =
    TAVIK_EVERY_LEVEL(cover_globe);
constexpr PerLevel<void(const Globe &globe, const PixelRun &run, SourcePositions &from)> map_globe =
    TAVIK_EVERY_LEVEL(map_globe);
constexpr PerLevel<void(const float *samples, const float *cover, uint8_t *dst, std::size_t count)> mix_covered =
    TAVIK_EVERY_LEVEL(mix_covered);

} // namespace

TAVIK_EXPORT(void)
xGlobe(int32_t map_width, int32_t map_height, int32_t width, int32_t height, float cx, float cy, float radius,
       float longitude, float latitude, const uint8_t *map_r, const uint8_t *map_g, const uint8_t *map_b,
       uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const float tilt = degrees_to_turns(latitude);
    const Globe globe = {cx,
                         cy,
                         radius,
                         1.0F / radius,
                         degrees_to_turns(longitude),
                         sin_turn(tilt),
                         cos_turn(tilt),
                         static_cast<float>(map_width),
                         2.0F * (static_cast<float>(map_height) - 1.0F)};
    const std::array<const uint8_t *, 3> map = {map_r, map_g, map_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    for_each_run(width, height, [&](const PixelRun &run) {
        std::array<float, sampling_run> cover;
        if (!cover_globe.active()(globe, run, cover.data())) return;
        SourcePositions from;
        map_globe.active()(globe, run, from);
        std::array<float, sampling_run> samples;
        for (std::size_t plane = 0; plane < 3; ++plane) {
            sample_bilinear_wrapped.active()(map[plane], map_width, map_height, from.x.data(), from.y.data(),
                                             samples.data(), run.count);
            mix_covered.active()(samples.data(), cover.data(), dst[plane] + run.at, run.count);
        }
    });
}
