// Four octaves at once, in the lanes of a vector.
#if TAVIK_LEVEL == TAVIK_SCALAR
constexpr size_t lanes = 1;
using Floats = float;
using Longs = int32_t;
using Words = uint32_t;
inline int32_t truncated(float value) { return truncate(value); }
inline float as_float(int32_t value) { return static_cast<float>(value); }
inline float magnitude(float value) { return std::fabs(value); }
#else
constexpr size_t lanes = 4;
using Floats = float __attribute__((vector_size(16)));
using Longs = int32_t __attribute__((vector_size(16)));
using Words = uint32_t __attribute__((vector_size(16)));
inline Longs truncated(const Floats &value) { return __builtin_convertvector(value, Longs); }
inline Floats as_float(const Longs &value) { return __builtin_convertvector(value, Floats); }
inline Floats magnitude(const Floats &value) { return std::bit_cast<Floats>(std::bit_cast<Longs>(value) & 0x7FFFFFFF); }
#endif

// 1 - hash × 2^-30.
inline Floats lattice_value(const Words &n) {
    const Words bits = n ^ (n << 13);
    const Words hash = (bits * (bits * bits * 15731U + 789221U) + 1376312589U) & 0x7FFFFFFFU;
    return 1.0F - as_float(std::bit_cast<Longs>(hash)) * 0x1p-30F;
}

// About (1 - cos(π·fraction)) / 2: the sine is a parabola through its zeros and extremes.
inline Floats cosine_weight(const Floats &fraction) {
    const Floats turns = (fraction * 3.1415927F + 1.5707964F) * 0.15915494F + 0.5F;
    const Words one_if_negative = std::bit_cast<Words>(turns) >> 31;
    const Longs whole = std::bit_cast<Longs>(std::bit_cast<Words>(truncated(turns)) - one_if_negative);
    const Floats angle = (turns - as_float(whole)) * 6.2831855F - 3.1415927F;
    const Floats sine = angle * 1.2732395F - angle * magnitude(angle) * 0.4052847F;
    return (1.0F - sine) * 0.5F;
}

inline Floats value_noise(const Floats &x, const Floats &y) {
    const Longs ix = truncated(x);
    const Longs iy = truncated(y);
    const Floats wx = cosine_weight(x - as_float(ix));
    const Floats wy = cosine_weight(y - as_float(iy));
    // Corners share a value wherever the products of their coordinates are the same.
    const auto left = std::bit_cast<Words>(ix);
    const auto above = std::bit_cast<Words>(iy);
    const Words right = left + 1U;
    const Words below = above + 1U;
    const Floats top = lattice_value(left * above) * (1.0F - wx) + lattice_value(right * above) * wx;
    const Floats bottom = lattice_value(left * below) * (1.0F - wx) + lattice_value(right * below) * wx;
    return top * (1.0F - wy) + bottom * wy;
}

// The octaves of the first frequency, twice, four and eight times it.
void octave_values(float x, float y, float first_frequency, float *values) {
    float frequencies[octaves_at_once];
    for (float &frequency : frequencies) {
        frequency = first_frequency;
        first_frequency += first_frequency;
    }
    for (size_t i = 0; i < octaves_at_once; i += lanes) {
        Floats frequency;
        std::memcpy(&frequency, frequencies + i, sizeof frequency);
        const Floats value = value_noise(frequency * x, frequency * y);
        std::memcpy(values + i, &value, sizeof value);
    }
}
