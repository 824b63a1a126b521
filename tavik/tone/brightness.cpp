#include "tavik/tone/tone.h"

#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

namespace {

// Unsigned, as the sums wrap around.
struct GreyWeights {
    uint32_t r;
    uint32_t g;
    uint32_t b;
    uint32_t scale;

    GreyWeights(int32_t expose_r, int32_t expose_g, int32_t expose_b)
        : r(255U - static_cast<uint32_t>(expose_r)),
          g(255U - static_cast<uint32_t>(expose_g)),
          b(255U - static_cast<uint32_t>(expose_b)) {
        const uint32_t total = r + g + b;
        scale = 65536U / (total == 0 ? 1 : total);
    }
};

} // namespace

#define TAVIK_ROWS "tavik/tone/brightness_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src, uint8_t *dst, std::size_t count, uint16_t factor)> scale_in_16_bits =
    TAVIK_EVERY_LEVEL(scale_in_16_bits);
constexpr PerLevel<void(uint8_t *plane, std::size_t count, uint8_t raise, uint8_t lower)> add_clamped =
    TAVIK_EVERY_LEVEL(add_clamped);
constexpr PerLevel<void(const GreyWeights &weights, const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst1,
                        uint8_t *dst2, uint8_t *dst3, std::size_t count)>
    weighted_grey = TAVIK_EVERY_LEVEL(weighted_grey);

int32_t factor_of_255(float factor) { return truncate(factor * 255.0F); }

// Blocks of 8 samples, the first one always.
void scale_blocks(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max, float factor) {
    constexpr std::size_t block = 8;
    const std::size_t count = std::max(upper_bounds(x_max, y_max) / block, std::size_t{1}) * block;
    const auto factor_16 = static_cast<uint16_t>(factor_of_255(factor));
    if (same_or_apart(src, dst, count)) {
        scale_in_16_bits.active()(src, dst, count, factor_16);
        return;
    }
    // Each block is read whole before it is written.
    for (std::size_t i = 0; i < count; i += block) {
        uint8_t scaled[block];
        scale_in_16_bits.scalar()(src + i, scaled, block, factor_16);
        std::memcpy(dst + i, scaled, block);
    }
}

} // namespace

TAVIK_EXPORT(void) xcontrast(int32_t x_max, int32_t y_max, float amount, uint8_t *plane) {
    apply_to_bytes(plane, plane, upper_bounds(x_max, y_max), [=](uint8_t value) {
        const int32_t stretched = truncate(static_cast<float>(value - 128) * amount);
        return static_cast<uint8_t>(clamp_to_byte(wrap_add(stretched, 128)));
    });
}

TAVIK_EXPORT(void)
FastGreyscaleExpose(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, int32_t width, int32_t height,
                    uint8_t *dst1, uint8_t *dst2, uint8_t *dst3, int32_t expose_r, int32_t expose_g, int32_t expose_b) {
    const std::size_t count = one_short(width, height);
    auto &row = row_in_order(weighted_grey, {src_r, src_g, src_b, dst1, dst2, dst3}, count);
    const GreyWeights weights(expose_r, expose_g, expose_b);
    FetchAhead(count, src_r, src_g, src_b, dst1, dst2, dst3).for_all([&](std::size_t i, std::size_t n) {
        row(weights, src_r + i, src_g + i, src_b + i, dst1 + i, dst2 + i, dst3 + i, n);
    });
}

TAVIK_EXPORT(void) xDimChannel(float factor, int32_t count, uint8_t *plane) {
    apply_to_bytes(plane, plane, element_count(count),
                   [=](uint8_t value) { return low_byte(truncate(static_cast<float>(value) * factor)); });
}

TAVIK_EXPORT(void) ChannelValue_mmx(uint8_t *dst, const uint8_t *src, int32_t x_max, int32_t y_max, float factor) {
    if (factor > 1.0F) return;
    scale_blocks(src, dst, x_max, y_max, factor);
}

TAVIK_EXPORT(void) ChannelValue1_mmx(uint8_t *plane, int32_t x_max, int32_t y_max, float factor) {
    if (factor <= 1.0F) scale_blocks(plane, plane, x_max, y_max, factor);
    if (factor > 1.0F) {
        apply_to_bytes(plane, plane, upper_bounds(x_max, y_max), [k = factor_of_255(factor)](uint8_t value) {
            return low_byte(std::min(wrap_mul(value, k) >> 8, 255));
        });
    }
}

TAVIK_EXPORT(void) FastChannelAdd(uint8_t *plane, int32_t width, int32_t height, int32_t delta) {
    const std::size_t count = one_short(width, height);
    if (delta < -255 || delta > 255) {
        apply_to_bytes(plane, plane, count,
                       [=](uint8_t value) { return static_cast<uint8_t>(clamp_to_byte(wrap_add(value, delta))); });
        return;
    }
    const auto raise = static_cast<uint8_t>(std::max(delta, 0));
    const auto lower = static_cast<uint8_t>(std::max(-delta, 0));
    add_clamped.active()(plane, count, raise, lower);
}
