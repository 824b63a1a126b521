inline uint32_t absolute_difference(uint8_t a, uint8_t b) { return a > b ? a - b : b - a; }

#if TAVIK_LEVEL >= TAVIK_SSE2

inline __m128i load_16(const uint8_t *from) { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from)); }
inline __m128i load_8(const uint8_t *from) { return _mm_loadl_epi64(reinterpret_cast<const __m128i *>(from)); }

// Two rows of 8 samples.
inline __m128i load_two_rows(const uint8_t *from, size_t stride) {
    return _mm_unpacklo_epi64(load_8(from), load_8(from + stride));
}

inline int32_t sum_of_halves(__m128i sums) { return _mm_cvtsi128_si32(_mm_add_epi32(sums, _mm_srli_si128(sums, 8))); }

#endif

// 16 columns, 16 rows.
int32_t absolute_differences_16(const uint8_t *a, const uint8_t *b, size_t stride) {
#if TAVIK_LEVEL >= TAVIK_SSE2
    __m128i sums = _mm_setzero_si128();
    for (size_t y = 0; y < 16; ++y)
        sums = _mm_add_epi32(sums, _mm_sad_epu8(load_16(a + y * stride), load_16(b + y * stride)));
    return sum_of_halves(sums);
#else
    uint32_t sum = 0;
    for (size_t y = 0; y < 16; ++y)
        for (size_t x = 0; x < 16; ++x) sum += absolute_difference(a[y * stride + x], b[y * stride + x]);
    return static_cast<int32_t>(sum);
#endif
}

// 8 columns, 9 rows.
int32_t absolute_differences_8(const uint8_t *a, const uint8_t *b, size_t stride) {
#if TAVIK_LEVEL >= TAVIK_SSE2
    __m128i sums = _mm_sad_epu8(load_8(a + 8 * stride), load_8(b + 8 * stride));
    for (size_t y = 0; y < 8; y += 2)
        sums = _mm_add_epi32(
            sums, _mm_sad_epu8(load_two_rows(a + y * stride, stride), load_two_rows(b + y * stride, stride)));
    return sum_of_halves(sums);
#else
    uint32_t sum = 0;
    for (size_t y = 0; y < 9; ++y)
        for (size_t x = 0; x < 8; ++x) sum += absolute_difference(a[y * stride + x], b[y * stride + x]);
    return static_cast<int32_t>(sum);
#endif
}

inline uint32_t squared_difference(uint8_t a, uint8_t b) {
    const uint32_t difference = absolute_difference(a, b);
    return difference * difference;
}

#if TAVIK_LEVEL >= TAVIK_SSE2

// The squares of 16 differences, in a few sums.
#if TAVIK_LEVEL >= TAVIK_AVX2
using Squares = uint32_t __attribute__((vector_size(32)));

inline Squares squares_of(__m128i differences) {
    const __m256i words = _mm256_cvtepu8_epi16(differences);
    return reinterpret_cast<Squares>(_mm256_madd_epi16(words, words));
}
#else
using Squares = uint32_t __attribute__((vector_size(16)));

inline Squares squares_of(__m128i differences) {
    const __m128i low = _mm_unpacklo_epi8(differences, _mm_setzero_si128());
    const __m128i high = _mm_unpackhi_epi8(differences, _mm_setzero_si128());
    return reinterpret_cast<Squares>(_mm_add_epi32(_mm_madd_epi16(low, low), _mm_madd_epi16(high, high)));
}
#endif

template <class Sum> inline void add_all(Squares squares, Sum &sum) {
    for (size_t i = 0; i < sizeof(Squares) / sizeof(uint32_t); ++i) sum += squares[i];
}

inline __m128i differences_of(__m128i a, __m128i b) { return _mm_or_si128(_mm_subs_epu8(a, b), _mm_subs_epu8(b, a)); }

#endif

// A square block of side × side samples, a strip of columns at a time; the sum wraps around.
uint32_t squared_differences(const uint8_t *a, const uint8_t *b, size_t stride, size_t side) {
    uint32_t sum = 0;
    size_t x = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    Squares sums = {};
    const auto add_strip = [&](auto load_row) {
        for (size_t y = 0; y < side; ++y)
            sums += squares_of(differences_of(load_row(a + y * stride + x), load_row(b + y * stride + x)));
    };
    for (; side - x >= 16; x += 16) add_strip([&](const uint8_t *from) { return load_16(from); });
    for (; side - x >= 8; x += 8) add_strip([&](const uint8_t *from) { return load_8(from); });
    add_all(sums, sum);
#endif
    for (; x < side; ++x)
        for (size_t y = 0; y < side; ++y) sum += squared_difference(a[y * stride + x], b[y * stride + x]);
    return sum;
}

// The same of three planes where both masks are not 0.
Known known_differences(const MaskedPlanes &a, const MaskedPlanes &b, size_t at_a, size_t at_b, size_t stride,
                        size_t side) {
    Known known = {};
    size_t x = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    // The sums of so many rows fit 32 bits.
    constexpr size_t most_rows = 1024;
    const auto add_strip = [&](size_t first, size_t last, auto load_row) {
        const __m128i zero = _mm_setzero_si128();
        Squares sums = {};
        __m128i counts = zero;
        for (size_t y = first; y < last; ++y) {
            const size_t in_a = at_a + y * stride + x;
            const size_t in_b = at_b + y * stride + x;
            const __m128i unknown = _mm_or_si128(_mm_cmpeq_epi8(load_row(a.mask + in_a), zero),
                                                 _mm_cmpeq_epi8(load_row(b.mask + in_b), zero));
            counts = _mm_add_epi32(counts, _mm_sad_epu8(_mm_andnot_si128(unknown, _mm_set1_epi8(1)), zero));
            for (int plane = 0; plane < 3; ++plane) {
                const __m128i differences =
                    differences_of(load_row(a.planes[plane] + in_a), load_row(b.planes[plane] + in_b));
                sums += squares_of(_mm_andnot_si128(unknown, differences));
            }
        }
        add_all(sums, known.sum);
        known.count += sum_of_halves(counts);
    };
    const auto add_strips = [&](size_t width, auto load_row) {
        for (; side - x >= width; x += width)
            for (size_t y = 0; y < side; y += most_rows) add_strip(y, std::min(y + most_rows, side), load_row);
    };
    add_strips(16, [&](const uint8_t *from) { return load_16(from); });
    add_strips(8, [&](const uint8_t *from) { return load_8(from); });
#endif
    for (; x < side; ++x) {
        for (size_t y = 0; y < side; ++y) {
            const size_t in_a = at_a + y * stride + x;
            const size_t in_b = at_b + y * stride + x;
            if (a.mask[in_a] == 0 || b.mask[in_b] == 0) continue;
            ++known.count;
            for (int plane = 0; plane < 3; ++plane)
                known.sum += squared_difference(a.planes[plane][in_a], b.planes[plane][in_b]);
        }
    }
    return known;
}
