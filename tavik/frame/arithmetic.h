// Number rules that every family shares.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>

namespace tavik {

// Truncation toward zero to a signed 32-bit integer as the processor does it: NaN and anything out of range
// give the lowest integer. The language leaves those cases undefined, and compilers fold them differently at
// each vector level.
template <class Float> constexpr int32_t truncate(Float value) {
    constexpr Float limit = 2147483648.0F;
    // Only the checked value is converted, so the conversion itself is always defined.
    const bool fits = value >= -limit && value < limit;
    const auto converted = static_cast<int32_t>(fits ? value : Float{0});
    return fits ? converted : std::numeric_limits<int32_t>::min();
}

// The low 8 bits of a 32-bit result.
template <class Integer> constexpr uint8_t low_byte(Integer value) { return static_cast<uint8_t>(value & 0xFF); }

// Clamps below first. A NaN fails both tests as the tonal and colour exports want it: it gives `high`.
constexpr float clamp_nan_high(float value, float low, float high) {
    const float raised = low > value ? low : value;
    return raised < high ? raised : high;
}

// Clamps above first, so a `high` below `low` gives `low`. NaN gives `high`.
constexpr float clamp(float value, float low, float high) {
    const float lowered = value < high ? value : high;
    return lowered > low ? lowered : low;
}

// The largest integer that is not above the value, which is held to ±2^30; NaN gives 2^30.
[[gnu::always_inline]] constexpr int32_t floor_to_int(float value) {
    const float held = clamp(value, -1073741824.0F, 1073741824.0F);
    const auto truncated = static_cast<int32_t>(held);
    return truncated - (static_cast<float>(truncated) > held ? 1 : 0);
}

// Rounds to the nearest byte, halves up.
constexpr uint8_t round_to_byte(float value) {
    return static_cast<uint8_t>(static_cast<int32_t>(clamp(value + 0.5F, 0.0F, 255.0F)));
}

// The index of the sample nearest to a position among `count` of them, the end samples beyond the ends.
constexpr int32_t nearest_index(float position, int32_t count) {
    return static_cast<int32_t>(clamp(position + 0.5F, 0.0F, static_cast<float>(count - 1)));
}

// The value where it is wanted, else 0. By a mask: compilers make a branch of a choice beside a long computation, which
// keeps loops scalar.
[[gnu::always_inline]] constexpr float value_or_zero(bool wanted, float value) {
    return std::bit_cast<float>(std::bit_cast<uint32_t>(value) & (wanted ? ~0U : 0U));
}

// The one value where it is wanted, else the other, by masks too.
[[gnu::always_inline]] constexpr float choose(bool wanted, float value, float other) {
    return std::bit_cast<float>(std::bit_cast<uint32_t>(value_or_zero(wanted, value)) |
                                std::bit_cast<uint32_t>(value_or_zero(!wanted, other)));
}

constexpr int32_t clamp_to_byte(int32_t value) { return value < 0 ? 0 : (value > 255 ? 255 : value); }

// Integer mean of three bytes: (a + b + c) / 3. 21846 / 65536 is above 1/3 by 1/98304, too little to carry any
// sum up to 765 over the next integer; the product stays in 16-bit vector lanes.
constexpr uint16_t mean_of_three(uint8_t a, uint8_t b, uint8_t c) {
    const auto sum = static_cast<uint16_t>(a + b + c);
    return static_cast<uint16_t>((uint32_t{sum} * 21846U) >> 16);
}

// Signed 32-bit sums, differences and products wrap around.
constexpr int32_t wrap_add(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
constexpr int32_t wrap_sub(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
constexpr int32_t wrap_mul(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// a modulo b, from 0 to b − 1.
constexpr int32_t floored_modulo(int64_t a, int32_t b) {
    const auto remainder = static_cast<int32_t>(a % b);
    return remainder < 0 ? remainder + b : remainder;
}

// About √x, up to 6% high, by halving the exponent in the float's bits.
constexpr float fast_root(float x) {
    return std::bit_cast<float>((wrap_sub(std::bit_cast<int32_t>(x), 0x00800000) >> 1) + 0x20000000);
}

// 1/255 to single precision.
constexpr float unit_per_byte = 0.003921569F;

} // namespace tavik
