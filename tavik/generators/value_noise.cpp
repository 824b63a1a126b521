#include <array>
#include <bit>
#include <cmath>

#include "tavik/generators/generators.h"

namespace {

constexpr std::size_t octaves_at_once = 4;

} // namespace

#define TAVIK_ROWS "tavik/generators/value_noise_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(float x, float y, float first_frequency, float *values)> octave_values =
    TAVIK_EVERY_LEVEL(octave_values);

} // namespace

TAVIK_REGISTER_EXPORT(float) IntNoise(int32_t n) { return scalar::lattice_value(static_cast<uint32_t>(n)); }

TAVIK_EXPORT(float) FastPerlinNoise_2D(float x, float y, int32_t octaves) {
    float frequency = 2.0F;
    // One octave alone is not worth a vector.
    if (octaves == 1) return scalar::value_noise(frequency * x, frequency * y) * 0.5F;
    std::array<float, octaves_at_once> values;
    float amplitude = 1.0F;
    float total = 0.0F;
    for (int32_t octave = 0; octave < octaves; ++octave) {
        const std::size_t lane = static_cast<std::size_t>(octave) % octaves_at_once;
        if (lane == 0) {
            octave_values.active()(x, y, frequency, values.data());
            frequency *= 16.0F;
        }
        amplitude *= 0.5F;
        total += values[lane] * amplitude;
    }
    return total;
}
