#include "tavik/tone/tone.h"

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

namespace {

struct Levels {
    int32_t out_low;
    int32_t out_high;
    int32_t in_low;
    int32_t scale;

    Levels(int32_t output_low, int32_t output_high, int32_t input_low, int32_t input_high)
        : out_low(output_low), out_high(output_high), in_low(input_low) {
        const int32_t range = wrap_sub(input_high, input_low);
        scale = range > 0 ? 65536 / range : 0;
    }

    uint8_t operator()(uint8_t value) const {
        const int32_t stretched = wrap_mul(wrap_sub(value, in_low), scale) >> 8;
        return low_byte(stretched < out_low ? out_low : std::min(stretched, out_high));
    }
};

struct Posterize {
    int32_t step;
    int32_t scale;

    explicit Posterize(int32_t step_between) : step(step_between), scale(65536 / step_between) {}

    uint8_t operator()(uint8_t value) const {
        const uint8_t quotient = low_byte(wrap_mul(value, scale) >> 16);
        return low_byte(quotient * low_byte(step));
    }
};

// The parallel twins' body: the function's table is shared by all pixels of the call.
template <class Function>
void apply_in_parallel(const uint8_t *src, uint8_t *dst, int32_t count, const Function &function) {
    const ByteTable table = tabulate(function);
    FetchAhead(element_count(count), src, dst).for_all_in_parallel([&](std::size_t i, std::size_t n) {
        map_bytes.active()(src + i, dst + i, n, table.data());
    });
}

} // namespace

TAVIK_EXPORT(void)
AdjustLevels_channel(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t height, int32_t out_low, int32_t out_high,
                     int32_t in_low, int32_t in_high) {
    apply_to_bytes(src, dst, one_short(wrap_add(x_max, 1), height), Levels(out_low, out_high, in_low, in_high));
}

TAVIK_EXPORT(void)
AdjustLevels_channel_ppl(const uint8_t *src, uint8_t *dst, int32_t width, int32_t height, int32_t out_low,
                         int32_t out_high, int32_t in_low, int32_t in_high) {
    apply_in_parallel(src, dst, wrap_mul(width, height), Levels(out_low, out_high, in_low, in_high));
}

TAVIK_EXPORT(void)
FastPosterize(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height, const uint8_t *src_r,
              const uint8_t *src_g, const uint8_t *src_b, int32_t step) {
    const std::size_t count = one_short(width, height);
    const Posterize posterize(step);
    apply_to_bytes(src_r, dst_r, count, posterize);
    apply_to_bytes(src_g, dst_g, count, posterize);
    apply_to_bytes(src_b, dst_b, count, posterize);
}

TAVIK_EXPORT(void)
FastPosterize_ppl(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t width, int32_t height, const uint8_t *src_r,
                  const uint8_t *src_g, const uint8_t *src_b, int32_t step) {
    const int32_t count = wrap_mul(width, height);
    const Posterize posterize(step);
    apply_in_parallel(src_r, dst_r, count, posterize);
    apply_in_parallel(src_g, dst_g, count, posterize);
    apply_in_parallel(src_b, dst_b, count, posterize);
}
