#include "tavik/tone/tone.h"

#include <bit>
#include <cmath>

#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

using namespace tavik;

namespace {

uint8_t unit_to_byte(float unit) { return static_cast<uint8_t>(clamp_nan_high(unit, 0.0F, 1.0F) * 255.0F); }

// A power through the exponent field of a double: scaling the upper word's distance from that of 1.0, less a
// correction, scales the logarithm.
uint8_t fast_power(uint8_t value, float gamma) {
    constexpr int32_t one = 1072632447;
    const double x = static_cast<float>(value) * unit_per_byte;
    const auto upper = static_cast<int32_t>(std::bit_cast<uint64_t>(x) >> 32);
    const double distance = wrap_sub(upper, one);
    const int32_t scaled = truncate(distance * double{gamma} + double{one});
    const auto power = std::bit_cast<double>(uint64_t{static_cast<uint32_t>(scaled)} << 32);
    // Black gives a NaN for exponents just above 1, and stays black.
    return power > 0 ? unit_to_byte(static_cast<float>(power)) : 0;
}

} // namespace

TAVIK_EXPORT(void) xGamma(int32_t x_max, int32_t y_max, float gamma, uint8_t *plane) {
    apply_to_bytes(plane, plane, upper_bounds(x_max, y_max), [=](uint8_t value) { return fast_power(value, gamma); });
}

TAVIK_EXPORT(void)
xGammaAB(float gamma, float gain, float offset, int32_t width, int32_t height, const uint8_t *src, uint8_t *dst) {
    if (width <= 0 || height <= 0) return;
    ByteTable table = tabulate([=](uint8_t value) {
        const float x = value == 255 ? 1.0F : static_cast<float>(value) * unit_per_byte;
        return unit_to_byte(std::pow(x, gamma) * gain + offset);
    });
    const FetchAhead planes(counts(width, height), src, dst);
    planes.for_rows(width, height,
                    [&](std::size_t i, std::size_t n) { map_bytes.active()(src + i, dst + i, n, table.data()); });
}
