#include "tavik/composite/composite.h"

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/composite/skins_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *const frames[6], uint8_t raise_first, uint8_t raise_last, const float weights[6],
                        uint8_t *dst, std::size_t count)>
    add_frames = TAVIK_EVERY_LEVEL(add_frames);

// The first three frames are tinted in channel 1, the last three in channel 3.
void add_skins(int32_t width, int32_t height, uint8_t tint, const float weights[6], const uint8_t *const frames[3][6],
               uint8_t *const dst[3]) {
    const std::size_t count = counts(width, height);
    run_three(count, [&](int32_t channel) {
        const uint8_t raise_first = channel == 0 ? tint : 0;
        const uint8_t raise_last = channel == 2 ? tint : 0;
        const uint8_t *const *f = frames[channel];
        uint8_t *to = dst[channel];
        FetchAhead(count, f[0], f[1], f[2], f[3], f[4], f[5], to).for_all([&](std::size_t i, std::size_t n) {
            const uint8_t *const from[6] = {f[0] + i, f[1] + i, f[2] + i, f[3] + i, f[4] + i, f[5] + i};
            add_frames.active()(from, raise_first, raise_last, weights, to + i, n);
        });
    });
}

} // namespace

TAVIK_EXPORT(void)
UnionSkin(int32_t width, int32_t height, float w1, float w2, float w3, float w4, float w5, float w6,
          const uint8_t *image1_1, const uint8_t *image1_2, const uint8_t *image1_3, const uint8_t *image2_1,
          const uint8_t *image2_2, const uint8_t *image2_3, const uint8_t *image3_1, const uint8_t *image3_2,
          const uint8_t *image3_3, const uint8_t *image4_1, const uint8_t *image4_2, const uint8_t *image4_3,
          const uint8_t *image5_1, const uint8_t *image5_2, const uint8_t *image5_3, const uint8_t *image6_1,
          const uint8_t *image6_2, const uint8_t *image6_3, uint8_t *dst1, uint8_t *dst2, uint8_t *dst3) {
    const float weights[6] = {w1, w2, w3, w4, w5, w6};
    const uint8_t *const frames[3][6] = {{image1_1, image2_1, image3_1, image4_1, image5_1, image6_1},
                                         {image1_2, image2_2, image3_2, image4_2, image5_2, image6_2},
                                         {image1_3, image2_3, image3_3, image4_3, image5_3, image6_3}};
    uint8_t *const dst[3] = {dst1, dst2, dst3};
    add_skins(width, height, 80, weights, frames, dst);
}

TAVIK_EXPORT(void)
UnionSkin_untinted(int32_t width, int32_t height, float w1, float w2, float w3, float w4, float w5, float w6,
                   const uint8_t *image1_1, const uint8_t *image1_2, const uint8_t *image1_3, const uint8_t *image2_1,
                   const uint8_t *image2_2, const uint8_t *image2_3, const uint8_t *image3_1, const uint8_t *image3_2,
                   const uint8_t *image3_3, const uint8_t *image4_1, const uint8_t *image4_2, const uint8_t *image4_3,
                   const uint8_t *image5_1, const uint8_t *image5_2, const uint8_t *image5_3, const uint8_t *image6_1,
                   const uint8_t *image6_2, const uint8_t *image6_3, uint8_t *dst1, uint8_t *dst2, uint8_t *dst3) {
    const float weights[6] = {w1, w2, w3, w4, w5, w6};
    const uint8_t *const frames[3][6] = {{image1_1, image2_1, image3_1, image4_1, image5_1, image6_1},
                                         {image1_2, image2_2, image3_2, image4_2, image5_2, image6_2},
                                         {image1_3, image2_3, image3_3, image4_3, image5_3, image6_3}};
    uint8_t *const dst[3] = {dst1, dst2, dst3};
    add_skins(width, height, 0, weights, frames, dst);
}
