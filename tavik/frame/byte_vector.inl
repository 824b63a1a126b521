// Vectors of bytes at the level that the including rows file is compiled for; include it inside the file, for the
// vector levels (TAVIK_LEVEL >= TAVIK_SSE2). A rows file uses them where the compiler makes little of a plain loop,
// which then remains for the last elements and for the scalar level.

using tavik::mean_of_three;
using tavik::truncate;

#if TAVIK_LEVEL >= TAVIK_AVX512

using ByteVector = __m512i;

// The forms without a mask start from an undefined vector, which compilers warn of.
constexpr __mmask16 every_lane = 0xFFFF;

inline ByteVector load(const uint8_t *from) { return _mm512_loadu_si512(from); }
inline void store(uint8_t *to, ByteVector value) { _mm512_storeu_si512(to, value); }
inline void stream(uint8_t *to, ByteVector value) { _mm512_stream_si512(reinterpret_cast<__m512i *>(to), value); }
inline ByteVector every_byte(uint8_t value) { return _mm512_set1_epi8(static_cast<char>(value)); }
inline ByteVector add_saturated(ByteVector a, ByteVector b) { return _mm512_adds_epu8(a, b); }
inline ByteVector subtract_saturated(ByteVector a, ByteVector b) { return _mm512_subs_epu8(a, b); }
inline ByteVector minimum(ByteVector a, ByteVector b) { return _mm512_min_epu8(a, b); }
inline ByteVector maximum(ByteVector a, ByteVector b) { return _mm512_max_epu8(a, b); }
inline ByteVector interleave_low_bytes(ByteVector a, ByteVector b) { return _mm512_unpacklo_epi8(a, b); }
inline ByteVector interleave_high_bytes(ByteVector a, ByteVector b) { return _mm512_unpackhi_epi8(a, b); }
inline ByteVector interleave_low_words(ByteVector a, ByteVector b) { return _mm512_unpacklo_epi16(a, b); }
inline ByteVector interleave_high_words(ByteVector a, ByteVector b) { return _mm512_unpackhi_epi16(a, b); }
inline ByteVector pack_words(ByteVector low, ByteVector high) { return _mm512_packus_epi16(low, high); }
inline ByteVector pack_longs(ByteVector low, ByteVector high) { return _mm512_packs_epi32(low, high); }
inline ByteVector multiply_high(ByteVector a, ByteVector b) { return _mm512_mulhi_epu16(a, b); }
inline ByteVector multiply_add_pairs(ByteVector a, ByteVector b) { return _mm512_madd_epi16(a, b); }

// Stores 16-byte lanes, by store or stream: the first of a, b, c and d, then the second of each, and so on.
template <auto put> void store_lanes(uint8_t *to, ByteVector a, ByteVector b, ByteVector c, ByteVector d) {
    const ByteVector ab_01 = __builtin_shufflevector(a, b, 0, 1, 2, 3, 8, 9, 10, 11);
    const ByteVector ab_23 = __builtin_shufflevector(a, b, 4, 5, 6, 7, 12, 13, 14, 15);
    const ByteVector cd_01 = __builtin_shufflevector(c, d, 0, 1, 2, 3, 8, 9, 10, 11);
    const ByteVector cd_23 = __builtin_shufflevector(c, d, 4, 5, 6, 7, 12, 13, 14, 15);
    put(to, __builtin_shufflevector(ab_01, cd_01, 0, 1, 4, 5, 8, 9, 12, 13));
    put(to + 64, __builtin_shufflevector(ab_01, cd_01, 2, 3, 6, 7, 10, 11, 14, 15));
    put(to + 128, __builtin_shufflevector(ab_23, cd_23, 0, 1, 4, 5, 8, 9, 12, 13));
    put(to + 192, __builtin_shufflevector(ab_23, cd_23, 2, 3, 6, 7, 10, 11, 14, 15));
}

// Puts 4-byte parts in order: the first of each 16-byte lane, then the second of each, and so on.
inline ByteVector gather_lanes(ByteVector value) {
    const ByteVector order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return _mm512_maskz_permutexvar_epi32(every_lane, order, value);
}

using FloatVector = __m512;

inline FloatVector load(const float *from) { return _mm512_loadu_ps(from); }
inline FloatVector every_float(float value) { return _mm512_set1_ps(value); }
inline FloatVector minimum_else_second(FloatVector a, FloatVector b) { return _mm512_maskz_min_ps(every_lane, a, b); }
inline FloatVector maximum_else_second(FloatVector a, FloatVector b) { return _mm512_maskz_max_ps(every_lane, a, b); }
inline ByteVector truncate(FloatVector value) { return _mm512_maskz_cvttps_epi32(every_lane, value); }

#elif TAVIK_LEVEL >= TAVIK_AVX2

using ByteVector = __m256i;

inline ByteVector load(const uint8_t *from) { return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(from)); }
inline void store(uint8_t *to, ByteVector value) { _mm256_storeu_si256(reinterpret_cast<__m256i *>(to), value); }
inline void stream(uint8_t *to, ByteVector value) { _mm256_stream_si256(reinterpret_cast<__m256i *>(to), value); }
inline ByteVector every_byte(uint8_t value) { return _mm256_set1_epi8(static_cast<char>(value)); }
inline ByteVector repeat_16(const uint8_t *from) {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i *>(from)));
}
inline ByteVector add_saturated(ByteVector a, ByteVector b) { return _mm256_adds_epu8(a, b); }
inline ByteVector subtract_saturated(ByteVector a, ByteVector b) { return _mm256_subs_epu8(a, b); }
inline ByteVector minimum(ByteVector a, ByteVector b) { return _mm256_min_epu8(a, b); }
inline ByteVector maximum(ByteVector a, ByteVector b) { return _mm256_max_epu8(a, b); }
inline ByteVector add(ByteVector a, ByteVector b) { return _mm256_add_epi8(a, b); }
inline ByteVector shuffle_16(ByteVector values, ByteVector index) { return _mm256_shuffle_epi8(values, index); }
inline ByteVector select_by_top_bit(ByteVector choice, ByteVector if_clear, ByteVector if_set) {
    return _mm256_blendv_epi8(if_clear, if_set, choice);
}
inline ByteVector interleave_low_bytes(ByteVector a, ByteVector b) { return _mm256_unpacklo_epi8(a, b); }
inline ByteVector interleave_high_bytes(ByteVector a, ByteVector b) { return _mm256_unpackhi_epi8(a, b); }
inline ByteVector interleave_low_words(ByteVector a, ByteVector b) { return _mm256_unpacklo_epi16(a, b); }
inline ByteVector interleave_high_words(ByteVector a, ByteVector b) { return _mm256_unpackhi_epi16(a, b); }
inline ByteVector pack_words(ByteVector low, ByteVector high) { return _mm256_packus_epi16(low, high); }
inline ByteVector pack_longs(ByteVector low, ByteVector high) { return _mm256_packs_epi32(low, high); }
inline ByteVector multiply_high(ByteVector a, ByteVector b) { return _mm256_mulhi_epu16(a, b); }
inline ByteVector multiply_add_pairs(ByteVector a, ByteVector b) { return _mm256_madd_epi16(a, b); }

template <auto put> void store_lanes(uint8_t *to, ByteVector a, ByteVector b, ByteVector c, ByteVector d) {
    put(to, _mm256_permute2x128_si256(a, b, 0x20));
    put(to + 32, _mm256_permute2x128_si256(c, d, 0x20));
    put(to + 64, _mm256_permute2x128_si256(a, b, 0x31));
    put(to + 96, _mm256_permute2x128_si256(c, d, 0x31));
}

inline ByteVector gather_lanes(ByteVector value) {
    return _mm256_permutevar8x32_epi32(value, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}

using FloatVector = __m256;

inline FloatVector load(const float *from) { return _mm256_loadu_ps(from); }
inline FloatVector every_float(float value) { return _mm256_set1_ps(value); }
inline FloatVector minimum_else_second(FloatVector a, FloatVector b) { return _mm256_min_ps(a, b); }
inline FloatVector maximum_else_second(FloatVector a, FloatVector b) { return _mm256_max_ps(a, b); }
inline ByteVector truncate(FloatVector value) { return _mm256_cvttps_epi32(value); }

#else

using ByteVector = __m128i;

inline ByteVector load(const uint8_t *from) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from)); }
inline void store(uint8_t *to, ByteVector value) { _mm_storeu_si128(reinterpret_cast<__m128i *>(to), value); }
inline void stream(uint8_t *to, ByteVector value) { _mm_stream_si128(reinterpret_cast<__m128i *>(to), value); }
inline ByteVector every_byte(uint8_t value) { return _mm_set1_epi8(static_cast<char>(value)); }
inline ByteVector add_saturated(ByteVector a, ByteVector b) { return _mm_adds_epu8(a, b); }
inline ByteVector subtract_saturated(ByteVector a, ByteVector b) { return _mm_subs_epu8(a, b); }
inline ByteVector minimum(ByteVector a, ByteVector b) { return _mm_min_epu8(a, b); }
inline ByteVector maximum(ByteVector a, ByteVector b) { return _mm_max_epu8(a, b); }
inline ByteVector interleave_low_bytes(ByteVector a, ByteVector b) { return _mm_unpacklo_epi8(a, b); }
inline ByteVector interleave_high_bytes(ByteVector a, ByteVector b) { return _mm_unpackhi_epi8(a, b); }
inline ByteVector interleave_low_words(ByteVector a, ByteVector b) { return _mm_unpacklo_epi16(a, b); }
inline ByteVector interleave_high_words(ByteVector a, ByteVector b) { return _mm_unpackhi_epi16(a, b); }
inline ByteVector pack_words(ByteVector low, ByteVector high) { return _mm_packus_epi16(low, high); }
inline ByteVector pack_longs(ByteVector low, ByteVector high) { return _mm_packs_epi32(low, high); }
inline ByteVector multiply_high(ByteVector a, ByteVector b) { return _mm_mulhi_epu16(a, b); }
inline ByteVector multiply_add_pairs(ByteVector a, ByteVector b) { return _mm_madd_epi16(a, b); }

template <auto put> void store_lanes(uint8_t *to, ByteVector a, ByteVector b, ByteVector c, ByteVector d) {
    put(to, a);
    put(to + 16, b);
    put(to + 32, c);
    put(to + 48, d);
}

inline ByteVector gather_lanes(ByteVector value) { return value; }

#if TAVIK_LEVEL >= TAVIK_SSE41
inline ByteVector repeat_16(const uint8_t *from) { return load(from); }
inline ByteVector add(ByteVector a, ByteVector b) { return _mm_add_epi8(a, b); }
inline ByteVector shuffle_16(ByteVector values, ByteVector index) { return _mm_shuffle_epi8(values, index); }
inline ByteVector select_by_top_bit(ByteVector choice, ByteVector if_clear, ByteVector if_set) {
    return _mm_blendv_epi8(if_clear, if_set, choice);
}
#endif

using FloatVector = __m128;

inline FloatVector load(const float *from) { return _mm_loadu_ps(from); }
inline FloatVector every_float(float value) { return _mm_set1_ps(value); }
inline FloatVector minimum_else_second(FloatVector a, FloatVector b) { return _mm_min_ps(a, b); }
inline FloatVector maximum_else_second(FloatVector a, FloatVector b) { return _mm_max_ps(a, b); }
inline ByteVector truncate(FloatVector value) { return _mm_cvttps_epi32(value); }

#endif

using Words = uint16_t __attribute__((vector_size(sizeof(ByteVector))));
using Longs = int32_t __attribute__((vector_size(sizeof(ByteVector))));

constexpr size_t vector_bytes = sizeof(ByteVector);

// The two halves of the bytes as 16-bit numbers, and back. Each 16-byte lane has halves of its own, which
// `from_words` puts together again.
inline Words low_words(ByteVector bytes) { return reinterpret_cast<Words>(interleave_low_bytes(bytes, ByteVector{})); }
inline Words high_words(ByteVector bytes) {
    return reinterpret_cast<Words>(interleave_high_bytes(bytes, ByteVector{}));
}
inline ByteVector from_words(Words low, Words high) {
    return pack_words(reinterpret_cast<ByteVector>(low), reinterpret_cast<ByteVector>(high));
}

// Applies a function of 16-bit numbers to bytes; it gives 0 .. 255.
template <class Function, class... Bytes> ByteVector in_words(const Function &function, Bytes... bytes) {
    return from_words(function(low_words(bytes)...), function(high_words(bytes)...));
}

inline Words multiply_high(Words a, Words b) {
    return reinterpret_cast<Words>(multiply_high(reinterpret_cast<ByteVector>(a), reinterpret_cast<ByteVector>(b)));
}

inline ByteVector mean_of_three(ByteVector a, ByteVector b, ByteVector c) {
    const Words third = Words{} + uint16_t{21846};
    return in_words([&](Words x, Words y, Words z) { return multiply_high(x + y + z, third); }, a, b, c);
}

// Stores a[0], b[0], c[0], d[0], a[1], b[1] and so on, by store or stream.
template <auto put = store>
void store_interleaved(uint8_t *to, ByteVector a, ByteVector b, ByteVector c, ByteVector d) {
    const ByteVector ab_low = interleave_low_bytes(a, b);
    const ByteVector ab_high = interleave_high_bytes(a, b);
    const ByteVector cd_low = interleave_low_bytes(c, d);
    const ByteVector cd_high = interleave_high_bytes(c, d);
    store_lanes<put>(to, interleave_low_words(ab_low, cd_low), interleave_high_words(ab_low, cd_low),
                     interleave_low_words(ab_high, cd_high), interleave_high_words(ab_high, cd_high));
}

// Applies a function to as many floats as there are bytes in a vector; its 32-bit results are clamped to 0 .. 255.
template <class Function> ByteVector bytes_of_floats(const float *from, const Function &function) {
    constexpr size_t step = vector_bytes / sizeof(float);
    const ByteVector low = pack_longs(function(load(from)), function(load(from + step)));
    const ByteVector high = pack_longs(function(load(from + 2 * step)), function(load(from + 3 * step)));
    return gather_lanes(pack_words(low, high));
}

// Calls body(i) for vectors at i that cover `count` bytes, if there are enough for one; else it returns 0. The last may
// cover bytes of the one before again, so destinations must be apart from sources.
template <class Body> size_t cover_with_vectors(size_t count, const Body &body) {
    if (count < vector_bytes) return 0;
    for (size_t i = 0; i < count; i += vector_bytes) body(std::min(i, count - vector_bytes));
    return count;
}

// FloatVector without the attributes that template arguments lose.
using Floats = float __attribute__((vector_size(vector_bytes)));

inline Floats to_floats(ByteVector longs) { return __builtin_convertvector(reinterpret_cast<Longs>(longs), Floats); }

// A vector of bytes as four vectors of floats: quarters of each 16-byte lane.
struct FloatQuarters {
    Floats quarters[4];

    explicit FloatQuarters(ByteVector bytes) {
        const ByteVector zero = {};
        const ByteVector low = interleave_low_bytes(bytes, zero);
        const ByteVector high = interleave_high_bytes(bytes, zero);
        quarters[0] = to_floats(interleave_low_words(low, zero));
        quarters[1] = to_floats(interleave_high_words(low, zero));
        quarters[2] = to_floats(interleave_low_words(high, zero));
        quarters[3] = to_floats(interleave_high_words(high, zero));
    }

    // The low bytes of the truncated floats.
    ByteVector low_bytes() const {
        const auto low = reinterpret_cast<ByteVector>(Longs{} + 0xFF);
        return pack_words(pack_longs(truncate(quarters[0]) & low, truncate(quarters[1]) & low),
                          pack_longs(truncate(quarters[2]) & low, truncate(quarters[3]) & low));
    }
};

// Stores the low bytes of the truncated function of the sources' samples, which it gets as floats, for as many whole
// vectors as there are; returns the samples done.
template <class Function, class... Source>
size_t map_floats(uint8_t *dst, size_t count, const Function &function, const Source *...src) {
    size_t i = 0;
    for (; i + vector_bytes <= count; i += vector_bytes) {
        const auto map_quarters = [&](auto... samples) {
            FloatQuarters mapped{ByteVector{}};
            for (int quarter = 0; quarter < 4; ++quarter)
                mapped.quarters[quarter] = function(samples.quarters[quarter]...);
            return mapped.low_bytes();
        };
        store(dst + i, map_quarters(FloatQuarters(load(src + i))...));
    }
    return i;
}
