// Elementary functions of single-precision numbers that give the same bits on every target and at every vector
// level. The runtime's own differ between targets and do not vectorise; these are minimax polynomials, one rounding
// per operation. Angles are in turns, so that the quarters of a turn are exact.
//
// All are inlined into the loops that call them and vectorise there.
#pragma once

#include <bit>
#include <cstdint>

#include "tavik/frame/arithmetic.h"

namespace tavik {

constexpr float degrees_to_turns(float degrees) { return degrees / 360.0F; }

// The rise from 0 to 1 over 0 .. 1 that is level at both ends.
constexpr float smooth(float t) { return (t * t) * (3.0F - (t + t)); }

// Off by less than 2e-7; sin_turn of 0, 1/4, 1/2 and 3/4 is 0, 1, ±0 and -1. NaN gives 0.
[[gnu::always_inline]] constexpr float sin_turn(float turns) {
    const float r = clamp(turns - static_cast<float>(floor_to_int(turns + 0.5F)), -0.5F, 0.5F);
    const float magnitude = r < 0 ? -r : r;
    // Beyond a quarter the curve comes back the way it went.
    const float a = magnitude < 0.5F - magnitude ? magnitude : 0.5F - magnitude;
    const float q = a * a;
    constexpr auto c1 = std::bit_cast<float>(0x40C90FDBU);
    constexpr auto c3 = std::bit_cast<float>(0xC2255DE1U);
    constexpr auto c5 = std::bit_cast<float>(0x42A33458U);
    constexpr auto c7 = std::bit_cast<float>(0xC2992666U);
    constexpr auto c9 = std::bit_cast<float>(0x421ED800U);
    const float p = a * (c1 + q * (c3 + q * (c5 + q * (c7 + q * c9))));
    return r < 0 ? -p : p;
}

[[gnu::always_inline]] constexpr float cos_turn(float turns) { return sin_turn(turns + 0.25F); }

// The angle of (x, y) from the x axis, -1/2 .. 1/2 turn. Off by less than 5e-8; exact on the axes; (0, 0) gives 0.
[[gnu::always_inline]] constexpr float atan2_turn(float y, float x) {
    const float along_x = x < 0 ? -x : x;
    const float along_y = y < 0 ? -y : y;
    const float high = along_x > along_y ? along_x : along_y;
    const float low = along_x > along_y ? along_y : along_x;
    const float a = high > 0 ? low / high : 0.0F;
    const float q = a * a;
    constexpr auto d0 = std::bit_cast<float>(0x3E22F97CU);
    constexpr auto d1 = std::bit_cast<float>(0xBD5946E5U);
    constexpr auto d2 = std::bit_cast<float>(0x3D020815U);
    constexpr auto d3 = std::bit_cast<float>(0xBCB55775U);
    constexpr auto d4 = std::bit_cast<float>(0x3C7B6F29U);
    constexpr auto d5 = std::bit_cast<float>(0xBC11CD2EU);
    constexpr auto d6 = std::bit_cast<float>(0x3B640C7FU);
    constexpr auto d7 = std::bit_cast<float>(0xBA292BC8U);
    const float octant = a * (d0 + q * (d1 + q * (d2 + q * (d3 + q * (d4 + q * (d5 + q * (d6 + q * d7)))))));
    const float quadrant = along_y > along_x ? 0.25F - octant : octant;
    const float half = x < 0 ? 0.5F - quadrant : quadrant;
    return y < 0 ? -half : half;
}

// Of a positive normal number; relative error below 2.5e-7, powers of two exact.
[[gnu::always_inline]] constexpr float log2_of_normal(float value) {
    const auto bits = std::bit_cast<uint32_t>(value);
    // The exponent that leaves a mantissa of √½ .. √2.
    const int32_t exponent = static_cast<int32_t>(bits - 0x3F3504F3U) >> 23;
    const float f = std::bit_cast<float>(bits - (static_cast<uint32_t>(exponent) << 23)) - 1.0F;
    const float s = f / (f + 2.0F);
    const float q = s * s;
    constexpr auto l0 = std::bit_cast<float>(0x4038AA3BU);
    constexpr auto l1 = std::bit_cast<float>(0x3F763873U);
    constexpr auto l2 = std::bit_cast<float>(0x3F13A386U);
    constexpr auto l3 = std::bit_cast<float>(0x3EDD0DF3U);
    return static_cast<float>(exponent) + s * (l0 + q * (l1 + q * (l2 + q * l3)));
}

// Of a number held to -126 .. 126; relative error below 1.1e-7, whole numbers exact.
[[gnu::always_inline]] constexpr float exp2_of_held(float value) {
    const float held = clamp(value, -126.0F, 126.0F);
    const int32_t exponent = floor_to_int(held + 0.5F);
    const float f = held - static_cast<float>(exponent);
    constexpr auto e1 = std::bit_cast<float>(0x3F317218U);
    constexpr auto e2 = std::bit_cast<float>(0x3E75FDEEU);
    constexpr auto e3 = std::bit_cast<float>(0x3D635774U);
    constexpr auto e4 = std::bit_cast<float>(0x3C1D96A7U);
    constexpr auto e5 = std::bit_cast<float>(0x3AAF9F1CU);
    constexpr auto e6 = std::bit_cast<float>(0x3920FD20U);
    const float p = 1.0F + f * (e1 + f * (e2 + f * (e3 + f * (e4 + f * (e5 + f * e6)))));
    return p * std::bit_cast<float>(static_cast<uint32_t>(exponent + 127) << 23);
}

// base to an exponent, in the errors of the two above; 0 for a base below the smallest normal number. A NaN gives some
// finite number.
[[gnu::always_inline]] constexpr float power(float base, float exponent) {
    constexpr float smallest_normal = 1.17549435e-38F;
    const bool normal = !(base < smallest_normal);
    return value_or_zero(normal, exp2_of_held(exponent * log2_of_normal(base)));
}

} // namespace tavik
