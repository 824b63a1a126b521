#include "tavik/colour/colour.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

namespace {

struct Sepia {
    float contrast;
    float lift;
    float desaturate;
    float tint;
};

struct Duotone {
    int32_t light[3];
    int32_t dark[3];
};

} // namespace

#define TAVIK_ROWS "tavik/colour/looks_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

// `down` is how far down the picture the row lies, 0 to below 1.
using GradedRow = void(uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count, float down);

constexpr PerLevel<GradedRow> darken_to_night = TAVIK_EVERY_LEVEL(darken_to_night);
constexpr PerLevel<GradedRow> add_fog = TAVIK_EVERY_LEVEL(add_fog);

template <class Look>
using LookRow = void(const Look &look, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
                     uint8_t *dst_g, uint8_t *dst_b, std::size_t count);

constexpr PerLevel<LookRow<Sepia>> tone_sepia = TAVIK_EVERY_LEVEL(tone_sepia);
constexpr PerLevel<LookRow<Duotone>> tone_duotone = TAVIK_EVERY_LEVEL(tone_duotone);
constexpr PerLevel<void(const uint8_t *r, const uint8_t *g, const uint8_t *b, float *dst, std::size_t count)>
    mean_to_float = TAVIK_EVERY_LEVEL(mean_to_float);

void grade_rows(const PerLevel<GradedRow> &rows, int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    if (width <= 0) return;
    const std::size_t stride = element_count(width);
    const std::size_t count = stride * element_count(height);
    auto &row = row_in_order(rows, {r, g, b}, count);
    const FetchAhead planes(count, r, g, b);
    const float step = 1.0F / static_cast<float>(height);
    for (int32_t y = 0; y < height; ++y) {
        const std::size_t start = stride * static_cast<std::size_t>(y);
        const float down = static_cast<float>(y) * step;
        planes.for_runs(start, start + stride,
                        [&](std::size_t i, std::size_t n) { row(r + i, g + i, b + i, n, down); });
    }
}

template <class Look>
void apply_look(const PerLevel<LookRow<Look>> &rows, const Look &look, int32_t width, int32_t height,
                const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
                uint8_t *dst_b) {
    const FetchAhead planes(counts(width, height), src_r, src_g, src_b, dst_r, dst_g, dst_b);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        rows.active()(look, src_r + i, src_g + i, src_b + i, dst_r + i, dst_g + i, dst_b + i, n);
    });
}

} // namespace

TAVIK_EXPORT(void) xDayForNight(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    grade_rows(darken_to_night, width, height, r, g, b);
}

TAVIK_EXPORT(void) xFogFilter(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    grade_rows(add_fog, width, height, r, g, b);
}

TAVIK_EXPORT(void)
xSepia(int32_t width, int32_t height, float lift, float desaturate, float tint, const uint8_t *src_r,
       const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const Sepia sepia = {1.0F - 2.0F * lift, lift * 255.0F, desaturate, tint};
    apply_look(tone_sepia, sepia, width, height, src_r, src_g, src_b, dst_r, dst_g, dst_b);
}

TAVIK_EXPORT(void)
xDuotone(int32_t width, int32_t height, int32_t light_r, int32_t light_g, int32_t light_b, int32_t dark_r,
         int32_t dark_g, int32_t dark_b, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
         uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const Duotone duotone = {{light_r, light_g, light_b}, {dark_r, dark_g, dark_b}};
    apply_look(tone_duotone, duotone, width, height, src_r, src_g, src_b, dst_r, dst_g, dst_b);
}

TAVIK_EXPORT(void)
colortograyscale_trim(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                      float *dst) {
    if (width < 2 || height < 2) return;
    const std::size_t stride = element_count(width);
    const std::size_t kept = stride - 1;
    const FetchAhead planes(counts(width, height), src_r, src_g, src_b, dst);
    parallel_for(0, height - 1, row_grain(width), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            const std::size_t start = y * stride;
            float *row = dst + y * kept;
            planes.for_runs(start, start + kept, [&](std::size_t i, std::size_t n) {
                mean_to_float.active()(src_r + i, src_g + i, src_b + i, row + (i - start), n);
            });
        }
    });
}
