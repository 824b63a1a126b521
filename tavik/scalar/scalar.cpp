#include "tavik/scalar/scalar.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "tavik/frame/arithmetic.h"

using namespace tavik;

namespace {

float cubic(float a0, float a1, float a2, float y1, float mu) { return (a0 * mu + a1) * mu * mu + a2 * mu + y1; }

} // namespace

TAVIK_EXPORT(int32_t) Clamp(int32_t v, int32_t lo, int32_t hi) { return v < lo ? lo : std::min(v, hi); }

TAVIK_EXPORT(float) LinearInterpolate(float a, float b, float t) { return (b - a) * t + a; }

TAVIK_EXPORT(float) CubicInterpolate(float y0, float y1, float y2, float y3, float mu) {
    const float a0 = y3 - y2 - y0 + y1;
    const float a1 = y0 - y1 - a0;
    const float a2 = y2 - y0;
    return cubic(a0, a1, a2, y1, mu);
}

TAVIK_EXPORT(float) CatmulInterpolate(float y0, float y1, float y2, float y3, float mu) {
    const float a0 = -0.5F * y0 + 1.5F * y1 - 1.5F * y2 + 0.5F * y3;
    const float a1 = y0 - 2.5F * y1 + 2.0F * y2 - 0.5F * y3;
    const float a2 = 0.5F * y2 - 0.5F * y0;
    return cubic(a0, a1, a2, y1, mu);
}

TAVIK_EXPORT(float) ArcInterpolate(float t) { return std::sqrt(1.0F - t * t); }

TAVIK_EXPORT(float) smoothstep(float edge0, float edge1, float x) {
    if (x < edge0) return 0.0F;
    if (x >= edge1) return 1.0F;
    const float u = (x - edge0) / (edge1 - edge0);
    return (3.0F - 2.0F * u) * u * u;
}

TAVIK_EXPORT(float) InvSqrt(float x) {
    const auto y = std::bit_cast<float>(wrap_sub(0x5F3759D5, std::bit_cast<int32_t>(x) >> 1));
    return y * (1.5F - 0.5F * x * y * y);
}

TAVIK_EXPORT(float) fastsqrt(float x) { return fast_root(x); }

TAVIK_EXPORT(float) fast_acos(float x) { return std::acos(x); }

TAVIK_EXPORT(double) arctan2(double y, double x) { return std::atan2(y, x); }

TAVIK_EXPORT(float) sine_x(float x) {
    // 1.5·2^24: single-precision numbers are 2 apart here, so adding it rounds to an even integer.
    constexpr float even_integers = 25165824.0F;
    const float y = x * 0.31830987F;
    const float nearest_even = (y + even_integers) - even_integers;
    const float t = y - nearest_even;
    return 4.0F * (t - t * std::fabs(t));
}

TAVIK_EXPORT(float) cosine_x(float x) {
    const float y = (x + 1.5707964F) * 0.15915494F + 0.5F;
    const int32_t k = wrap_sub(truncate(y), std::signbit(y) ? 1 : 0);
    const float z = (y - static_cast<float>(k)) * 6.2831855F - 3.1415927F;
    return z * 1.2732395F - z * std::fabs(z) * 0.40528470F;
}

TAVIK_EXPORT(float) xfloor(float x) { return std::floor(x); }

TAVIK_EXPORT(double) xceil(float x) { return std::ceil(double{x}); }

TAVIK_EXPORT(int32_t) modulo(int32_t a, int32_t b) { return a % b; }

TAVIK_EXPORT(int32_t) NewMod(int32_t a, int32_t b) {
    if (a >= 0) return a % b;
    const auto folded = static_cast<float>(wrap_sub(wrap_sub(b, ~a % b), 1));
    const auto largest = static_cast<float>(wrap_sub(b, 1));
    return folded < 0.0F ? 0 : truncate(std::min(folded, largest));
}
