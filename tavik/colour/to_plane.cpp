#include <cmath>

#include "tavik/colour/colour.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

namespace {

struct Key {
    int32_t red, green, blue;
    float inner;
    float slope; // of alpha, beyond the inner distance
};

} // namespace

#define TAVIK_ROWS "tavik/colour/to_plane_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, std::size_t count)>
    weigh_luma = TAVIK_EVERY_LEVEL(weigh_luma);
constexpr PerLevel<void(const Key &key, const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst,
                        std::size_t count)>
    key_to_alpha = TAVIK_EVERY_LEVEL(key_to_alpha);

} // namespace

TAVIK_EXPORT(void)
xColorToGrayscale(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                  uint8_t *dst) {
    const std::size_t stride = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        const std::size_t start = begin * stride;
        weigh_luma.active()(src_r + start, src_g + start, src_b + start, dst + start, (end - begin) * stride);
    });
}

TAVIK_EXPORT(void)
xColorToGrayChannel(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                    uint8_t *dst) __attribute__((alias(TAVIK_SYMBOL("xColorToGrayscale", "24"))));

TAVIK_EXPORT(void)
xKeyToAlpha(int32_t width, int32_t height, int32_t key_r, int32_t key_g, int32_t key_b, float inner, float outer,
            const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *alpha) {
    const Key key = {key_r, key_g, key_b, inner, outer > inner ? 1.0F / (outer - inner) : 1e30F};
    const std::size_t stride = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        const std::size_t start = begin * stride;
        key_to_alpha.active()(key, src_r + start, src_g + start, src_b + start, alpha + start, (end - begin) * stride);
    });
}
