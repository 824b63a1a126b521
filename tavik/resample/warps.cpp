// Warps whose source positions follow from a formula.
#include <cmath>
#include <cstring>

#include "tavik/frame/elementary.h"
#include "tavik/frame/sampling.h"
#include "tavik/resample/resample.h"

namespace {

using namespace tavik;

struct Fisheye {
    float centre_x, centre_y;
    float per_square; // 1 / radius²
    float strength, gain;
};

struct Twirl {
    float centre_x, centre_y;
    float per_pixel; // 1 / radius
    float turns;
};

struct Disc {
    float centre_x, centre_y;
    float columns; // of the unrolled picture
    float pixels_per_row, rows_per_pixel, turns_per_column;
};

struct Lens {
    float centre_x, centre_y;
    float per_square; // 1 at a corner of a centred picture
    float k1, k2, zoom;
};

} // namespace

#define TAVIK_ROWS "tavik/resample/warps_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

template <class Warp> using PositionRow = PerLevel<bool(const Warp &warp, const PixelRun &run, SourcePositions &from)>;

constexpr PositionRow<Fisheye> fisheye = TAVIK_EVERY_LEVEL(fisheye);
constexpr PositionRow<Twirl> twirl = TAVIK_EVERY_LEVEL(twirl);
constexpr PositionRow<Disc> bend_to_disc = TAVIK_EVERY_LEVEL(bend_to_disc);
constexpr PositionRow<Disc> unroll_disc = TAVIK_EVERY_LEVEL(unroll_disc);
constexpr PerLevel<void(const Lens &warp, float channel_zoom, const PixelRun &run, SourcePositions &from)> lens =
    TAVIK_EVERY_LEVEL(lens);

using Sources = std::array<const uint8_t *, 3>;
using Destinations = std::array<uint8_t *, 3>;

template <class Warp>
void draw(const PositionRow<Warp> &positions, const Warp &warp, int32_t width, int32_t height, const Sources &src,
          const Destinations &dst, const PerLevel<SampleBilinearRow> &sample = sample_bilinear) {
    for_each_run(width, height, [&](const PixelRun &run) {
        const Destinations to = {dst[0] + run.at, dst[1] + run.at, dst[2] + run.at};
        SourcePositions from;
        if (positions.active()(warp, run, from)) {
            sample_three_planes(src.data(), width, height, from.x.data(), from.y.data(), to.data(), run.count, sample);
            return;
        }
        for (std::size_t plane = 0; plane < 3; ++plane) std::memcpy(to[plane], src[plane] + run.at, run.count);
    });
}

// One channel after the other, each enlarged a little differently.
struct LensDrawing {
    Lens warp;
    std::array<float, 3> channel_zooms;
    int32_t width, height;
    Sources src;
    Destinations dst;

    LensDrawing(int32_t picture_width, int32_t picture_height, float cx, float cy, float k1, float k2, float zoom,
                float fringe, const Sources &sources, const Destinations &destinations)
        : warp{cx, cy, 0, k1, k2, zoom},
          channel_zooms{1.0F + fringe, 1.0F, 1.0F - fringe},
          width(picture_width),
          height(picture_height),
          src(sources),
          dst(destinations) {
        const auto across = static_cast<float>(width);
        const auto down = static_cast<float>(height);
        warp.per_square = 4.0F / (across * across + down * down);
    }

    void operator()(const PixelRun &run) const {
        SourcePositions from;
        std::array<float, sampling_run> samples;
        for (std::size_t plane = 0; plane < 3; ++plane) {
            lens.active()(warp, channel_zooms[plane], run, from);
            sample_bilinear.active()(src[plane], width, height, from.x.data(), from.y.data(), samples.data(),
                                     run.count);
            round_bytes.active()(samples.data(), dst[plane] + run.at, run.count);
        }
    }
};

} // namespace

TAVIK_EXPORT(void)
xFisheye(int32_t width, int32_t height, float cx, float cy, float radius, float strength, const uint8_t *src_r,
         const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const Fisheye warp = {cx, cy, 1.0F / (radius * radius), strength, 1.0F - strength};
    draw(fisheye, warp, width, height, {src_r, src_g, src_b}, {dst_r, dst_g, dst_b});
}

TAVIK_EXPORT(void)
xRenderTwirlTo(float cx, float cy, float radius, float degrees, int32_t width, int32_t rows, uint8_t *dst_r,
               uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b) {
    const Twirl warp = {cx, cy, 1.0F / radius, degrees_to_turns(degrees)};
    draw(twirl, warp, width, rows, {src_r, src_g, src_b}, {dst_r, dst_g, dst_b});
}

TAVIK_EXPORT(void)
xPolarHelper(int32_t width, int32_t height, float cx, float cy, float radius, int32_t unroll, const uint8_t *src_r,
             const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const auto columns = static_cast<float>(width);
    const auto last_row = static_cast<float>(height) - 1.0F;
    const Disc warp = {cx, cy, columns, height > 1 ? radius / last_row : 0, last_row / radius, 1.0F / columns};
    const Sources src = {src_r, src_g, src_b};
    const Destinations dst = {dst_r, dst_g, dst_b};
    if (unroll == 0)
        draw(bend_to_disc, warp, width, height, src, dst, sample_bilinear_wrapped);
    else
        draw(unroll_disc, warp, width, height, src, dst);
}

TAVIK_EXPORT(void)
xLensHelper(int32_t width, int32_t height, float cx, float cy, float k1, float k2, float zoom, float fringe,
            const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
            uint8_t *dst_b) {
    for_each_run_of_rows(
        width, 0, height,
        LensDrawing(width, height, cx, cy, k1, k2, zoom, fringe, {src_r, src_g, src_b}, {dst_r, dst_g, dst_b}));
}

TAVIK_EXPORT(void)
p_LensHelper(int32_t width, int32_t height, float cx, float cy, float k1, float k2, float zoom, float fringe,
             const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
             uint8_t *dst_b) {
    for_each_run(
        width, height,
        LensDrawing(width, height, cx, cy, k1, k2, zoom, fringe, {src_r, src_g, src_b}, {dst_r, dst_g, dst_b}));
}
