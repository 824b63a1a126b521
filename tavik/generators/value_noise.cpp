#include <cmath>

#include "tavik/frame/arithmetic.h"
#include "tavik/generators/generators.h"

using namespace tavik;

namespace {

float lattice_value(int32_t n) {
    const uint32_t bits = static_cast<uint32_t>(n) ^ (static_cast<uint32_t>(n) << 13);
    const uint32_t hash = (bits * (bits * bits * 15731U + 789221U) + 1376312589U) & 0x7FFFFFFFU;
    return 1.0F - static_cast<float>(static_cast<int32_t>(hash)) * 0x1p-30F;
}

// About (1 - cos(π·fraction)) / 2: the sine is a parabola through its zeros and extremes.
float cosine_weight(float fraction) {
    const float turns = (fraction * 3.1415927F + 1.5707964F) * 0.15915494F + 0.5F;
    const int32_t whole = wrap_sub(truncate(turns), std::signbit(turns) ? 1 : 0);
    const float angle = (turns - static_cast<float>(whole)) * 6.2831855F - 3.1415927F;
    const float sine = angle * 1.2732395F - angle * std::fabs(angle) * 0.4052847F;
    return (1.0F - sine) * 0.5F;
}

float value_noise(float x, float y) {
    const int32_t ix = truncate(x);
    const int32_t iy = truncate(y);
    const int32_t next_x = wrap_add(ix, 1);
    const int32_t next_y = wrap_add(iy, 1);
    const float wx = cosine_weight(x - static_cast<float>(ix));
    const float wy = cosine_weight(y - static_cast<float>(iy));
    // Corners share a value wherever the products of their coordinates are the same.
    const auto between = [wx](float left, float right) { return left * (1.0F - wx) + right * wx; };
    const float top = between(lattice_value(wrap_mul(ix, iy)), lattice_value(wrap_mul(next_x, iy)));
    const float bottom = between(lattice_value(wrap_mul(ix, next_y)), lattice_value(wrap_mul(next_x, next_y)));
    return top * (1.0F - wy) + bottom * wy;
}

} // namespace

TAVIK_REGISTER_EXPORT(float) IntNoise(int32_t n) { return lattice_value(n); }

TAVIK_EXPORT(float) FastPerlinNoise_2D(float x, float y, int32_t octaves) {
    float frequency = 1.0F;
    float amplitude = 1.0F;
    float total = 0.0F;
    for (int32_t octave = 0; octave < octaves; ++octave) {
        amplitude *= 0.5F;
        frequency += frequency;
        total += value_noise(frequency * x, frequency * y) * amplitude;
    }
    return total;
}
