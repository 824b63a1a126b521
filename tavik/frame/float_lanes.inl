// Samples of planes in float lanes, one vector at a time or one by one: functions written for a type Float serve both.
// Include it inside a rows file.

inline float select(bool choice, float if_true, float if_false) { return choice ? if_true : if_false; }

template <class Float> Float read_samples(const float *from);
template <class Float> Float read_samples(const uint8_t *from);
template <class Float> Float columns_from(int32_t first);

template <> inline float read_samples<float>(const float *from) { return *from; }
template <> inline float read_samples<float>(const uint8_t *from) { return static_cast<float>(*from); }
template <> inline float columns_from<float>(int32_t first) { return static_cast<float>(first); }

inline float square_root(float value) { return std::sqrt(value); }
inline bool any_lane(bool choice) { return choice; }

inline void write_samples(float *to, float value) { *to = value; }
inline void write_samples(uint8_t *to, float value) { *to = low_byte(tavik::truncate(value)); }

#if TAVIK_LEVEL >= TAVIK_SSE2

#include "tavik/frame/byte_vector.inl"

using Floats = float __attribute__((vector_size(vector_bytes)));

constexpr int32_t lanes = vector_bytes / sizeof(float);

inline Floats select(Longs choice, Floats if_true, Floats if_false) { return choice ? if_true : if_false; }

inline Floats square_root(Floats values) {
#if TAVIK_LEVEL >= TAVIK_AVX512
    return _mm512_maskz_sqrt_ps(every_lane, values);
#elif TAVIK_LEVEL >= TAVIK_AVX2
    return _mm256_sqrt_ps(values);
#else
    return _mm_sqrt_ps(values);
#endif
}

inline bool any_lane(Longs choice) {
    const auto bits = reinterpret_cast<ByteVector>(choice);
#if TAVIK_LEVEL >= TAVIK_AVX512
    return _mm512_test_epi32_mask(bits, bits) != 0;
#elif TAVIK_LEVEL >= TAVIK_AVX2
    return _mm256_movemask_epi8(bits) != 0;
#else
    return _mm_movemask_epi8(bits) != 0;
#endif
}

inline Longs lane_numbers() {
    Longs numbers;
    for (int32_t lane = 0; lane < lanes; ++lane) numbers[lane] = lane;
    return numbers;
}

template <> inline Floats columns_from<Floats>(int32_t first) {
    return __builtin_convertvector(lane_numbers() + first, Floats);
}

template <> inline Floats read_samples<Floats>(const float *from) { return reinterpret_cast<Floats>(load(from)); }

template <> inline Floats read_samples<Floats>(const uint8_t *from) {
#if TAVIK_LEVEL >= TAVIK_AVX512
    const ByteVector longs =
        _mm512_maskz_cvtepu8_epi32(every_lane, _mm_loadu_si128(reinterpret_cast<const __m128i *>(from)));
#elif TAVIK_LEVEL >= TAVIK_AVX2
    const ByteVector longs = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i *>(from)));
#else
    int32_t four;
    std::memcpy(&four, from, sizeof four);
    const ByteVector zero = {};
    const ByteVector longs = interleave_low_words(interleave_low_bytes(_mm_cvtsi32_si128(four), zero), zero);
#endif
    return __builtin_convertvector(reinterpret_cast<Longs>(longs), Floats);
}

inline void write_samples(float *to, Floats values) { std::memcpy(to, &values, sizeof values); }

inline void write_samples(uint8_t *to, Floats values) {
    const ByteVector longs = truncate(reinterpret_cast<FloatVector>(values));
#if TAVIK_LEVEL >= TAVIK_AVX512
    _mm_storeu_si128(reinterpret_cast<__m128i *>(to), _mm512_maskz_cvtepi32_epi8(every_lane, longs));
#else
    const auto low_bytes = reinterpret_cast<ByteVector>(reinterpret_cast<Longs>(longs) & 0xFF);
#if TAVIK_LEVEL >= TAVIK_AVX2
    const __m128i words = _mm_packs_epi32(_mm256_castsi256_si128(low_bytes), _mm256_extracti128_si256(low_bytes, 1));
    _mm_storel_epi64(reinterpret_cast<__m128i *>(to), _mm_packus_epi16(words, words));
#else
    const ByteVector words = pack_longs(low_bytes, low_bytes);
    const int32_t four = _mm_cvtsi128_si32(pack_words(words, words));
    std::memcpy(to, &four, sizeof four);
#endif
#endif
}

#else

constexpr int32_t lanes = 1;

#endif

// clamp of arithmetic.h: what is no number comes out high.
template <class Float> Float clamp(Float value, float low, float high) {
    const Float lowest = low - Float{};
    const Float highest = high - Float{};
    const Float lowered = select(value < highest, value, highest);
    return select(lowered > lowest, lowered, lowest);
}
