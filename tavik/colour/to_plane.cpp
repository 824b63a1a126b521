#include <cmath>

#include "tavik/colour/colour.h"
#include "tavik/frame/fetch_ahead.h"
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
    const FetchAhead planes(counts(width, height), src_r, src_g, src_b, dst);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        weigh_luma.active()(src_r + i, src_g + i, src_b + i, dst + i, n);
    });
}

TAVIK_EXPORT(void)
xColorToGrayChannel(int32_t width, int32_t height, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b,
                    uint8_t *dst) __attribute__((alias(TAVIK_SYMBOL("xColorToGrayscale", "24"))));

TAVIK_EXPORT(void)
xKeyToAlpha(int32_t width, int32_t height, int32_t key_r, int32_t key_g, int32_t key_b, float inner, float outer,
            const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *alpha) {
    const Key key = {key_r, key_g, key_b, inner, outer > inner ? 1.0F / (outer - inner) : 1e30F};
    const FetchAhead planes(counts(width, height), src_r, src_g, src_b, alpha);
    planes.for_rows(width, height, [&](std::size_t i, std::size_t n) {
        key_to_alpha.active()(key, src_r + i, src_g + i, src_b + i, alpha + i, n);
    });
}
