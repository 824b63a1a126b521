#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

// The cubic of a byte's neighbourhood.
inline uint8_t cubic_byte(float p0, float p1, float p2, float p3, float t) {
    const float a = 1.5F * p1 - 0.5F * p0 - 1.5F * p2 + 0.5F * p3;
    const float b = p0 - 2.5F * p1 + 2.0F * p2 - 0.5F * p3;
    const float c = 0.5F * p2 - 0.5F * p0;
    const float value = ((a * t + b) * (t * t) + c * t) + p1;
    // A fraction is less than 1 either way, and the value not far outside the bytes.
    return static_cast<uint8_t>(clamp_to_byte(static_cast<int32_t>(value)));
}

#if TAVIK_LEVEL >= TAVIK_SSE2

// The same of vectors of quads. Twice the coefficients are whole numbers, which products of 16 bits give exactly, and
// twice the value is what the same steps make of them.
class CubicOfQuads {
  public:
    CubicOfQuads()
        : low_bytes(pair(0xFF, 0xFF)),
          even_of_a(pair(-1, -3)),
          odd_of_a(pair(3, 1)),
          even_of_b(pair(2, 4)),
          odd_of_b(pair(-5, -1)),
          even_of_c(pair(-1, 1)),
          odd_of_p1(pair(2, 0)) {}

    // The truncated values, not clamped.
    ByteVector operator()(ByteVector quads, FloatVector t) const {
        const ByteVector even = quads & low_bytes;
        const ByteVector odd = reinterpret_cast<ByteVector>(reinterpret_cast<Words>(quads) >> 8);
        const auto sum_of = [&](ByteVector even_weights, ByteVector odd_weights) {
            return reinterpret_cast<Longs>(multiply_add_pairs(even, even_weights)) +
                   reinterpret_cast<Longs>(multiply_add_pairs(odd, odd_weights));
        };
        const auto floats = [&](Longs longs) { return __builtin_convertvector(longs, FloatVector); };
        const FloatVector a = floats(sum_of(even_of_a, odd_of_a));
        const FloatVector b = floats(sum_of(even_of_b, odd_of_b));
        const FloatVector c = floats(reinterpret_cast<Longs>(multiply_add_pairs(even, even_of_c)));
        const FloatVector p1 = floats(reinterpret_cast<Longs>(multiply_add_pairs(odd, odd_of_p1)));
        return truncate((((a * t + b) * (t * t) + c * t) + p1) * every_float(0.5F));
    }

  private:
    static ByteVector pair(int32_t first, int32_t second) {
        return reinterpret_cast<ByteVector>(Longs{} + (second * 65536 + (first & 0xFFFF)));
    }

    ByteVector low_bytes;
    // Of p0 and p2, and of p1 and p3.
    ByteVector even_of_a, odd_of_a, even_of_b, odd_of_b, even_of_c, odd_of_p1;
};

#endif

// The samples around each position. Those beside the first are clamped to the row.
void collect_quads(const uint8_t *row, const RowPositions &positions, Quad *quads) {
    for (size_t x = 0; x < positions.count;) {
#if TAVIK_LEVEL >= TAVIK_SSE41
        if (x + RowPositions::group <= positions.count && positions.is_shuffled[x / RowPositions::group]) {
            const auto load_16 = [](const uint8_t *from) {
                return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
            };
            const __m128i group =
                _mm_shuffle_epi8(load_16(row + positions.whole[x] - 1), load_16(&positions.shuffle[4 * x]));
            _mm_storeu_si128(reinterpret_cast<__m128i *>(quads + x), group);
            x += RowPositions::group;
            continue;
        }
#endif
        const size_t end = std::min(x + RowPositions::group, positions.count);
        for (; x < end; ++x) {
            const int32_t i = positions.whole[x];
            if (i >= 1 && i <= positions.last - 2) {
                std::memcpy(&quads[x], row + i - 1, sizeof(Quad));
                continue;
            }
            const auto at = [&](int32_t offset) {
                return Quad{row[std::clamp(wrap_add(i, offset), 0, positions.last)]};
            };
            quads[x] = at(-1) | Quad{row[i]} << 8 | at(1) << 16 | at(2) << 24;
        }
    }
}

void cubic_of_quads(const Quad *quads, const float *fractions, uint8_t *dst, size_t count) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const CubicOfQuads cubic;
    done = cover_with_vectors(count, [&](size_t x) {
        const auto quarter = [&](size_t i) {
            const size_t from = x + i * (vector_bytes / 4);
            return cubic(load(reinterpret_cast<const uint8_t *>(quads + from)), load(fractions + from));
        };
        store(dst + x,
              gather_lanes(pack_words(pack_longs(quarter(0), quarter(1)), pack_longs(quarter(2), quarter(3)))));
    });
#endif
    const auto sample = [](Quad quad, int place) { return static_cast<float>(quad >> 8 * place & 0xFF); };
    for (size_t x = done; x < count; ++x) {
        const Quad quad = quads[x];
        dst[x] = cubic_byte(sample(quad, 0), sample(quad, 1), sample(quad, 2), sample(quad, 3), fractions[x]);
    }
}

void cubic_of_rows(const FourRows &rows, float fraction, uint8_t *dst, size_t count) {
    const auto [p0, p1, p2, p3] = rows;
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const CubicOfQuads cubic;
    const FloatVector t = every_float(fraction);
    done = cover_with_vectors(count, [&, a = p0, b = p1, c = p2, d = p3](size_t x) {
        const ByteVector upper_low = interleave_low_bytes(load(a + x), load(b + x));
        const ByteVector upper_high = interleave_high_bytes(load(a + x), load(b + x));
        const ByteVector lower_low = interleave_low_bytes(load(c + x), load(d + x));
        const ByteVector lower_high = interleave_high_bytes(load(c + x), load(d + x));
        store(dst + x, pack_words(pack_longs(cubic(interleave_low_words(upper_low, lower_low), t),
                                             cubic(interleave_high_words(upper_low, lower_low), t)),
                                  pack_longs(cubic(interleave_low_words(upper_high, lower_high), t),
                                             cubic(interleave_high_words(upper_high, lower_high), t))));
    });
#endif
    for (size_t x = done; x < count; ++x) dst[x] = cubic_byte(p0[x], p1[x], p2[x], p3[x], fraction);
}

void bicubic_columns(const FourRows &rows, float fraction, float *values, size_t count) {
    const auto [p0, p1, p2, p3] = rows;
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) values[x] = catmull_rom(p0[x], p1[x], p2[x], p3[x], fraction);
}

// Turns the four values from each of the places `first` to `end` on into rows of the first ones, the second ones and so
// on. The places may lie anywhere.
inline void gather_fours_apart(const float *values, const int32_t *places, float (*rows)[block_columns], size_t first,
                               size_t end) {
    size_t x = first;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; x + 4 <= end; x += 4) {
        __m128 a = _mm_loadu_ps(values + places[x]);
        __m128 b = _mm_loadu_ps(values + places[x + 1]);
        __m128 c = _mm_loadu_ps(values + places[x + 2]);
        __m128 d = _mm_loadu_ps(values + places[x + 3]);
        _MM_TRANSPOSE4_PS(a, b, c, d);
        _mm_storeu_ps(rows[0] + x, a);
        _mm_storeu_ps(rows[1] + x, b);
        _mm_storeu_ps(rows[2] + x, c);
        _mm_storeu_ps(rows[3] + x, d);
    }
#endif
    for (; x < end; ++x)
        for (size_t row = 0; row < 4; ++row) rows[row][x] = values[places[x] + static_cast<int32_t>(row)];
}

// The same of all places.
inline void gather_fours(const float *values, const int32_t *places, float (*rows)[block_columns], size_t count) {
    size_t x = 0;
#if TAVIK_LEVEL >= TAVIK_AVX2
#if TAVIK_LEVEL >= TAVIK_AVX512
    constexpr size_t lanes = 16;
    const auto offsets_at = [&](size_t at) {
        const __m512i first = _mm512_set1_epi32(places[at]);
        return _mm512_sub_epi32(_mm512_loadu_si512(places + at), first);
    };
    const auto lie_together = [](__m512i offsets) {
        return _mm512_cmplt_epu32_mask(offsets, _mm512_set1_epi32(lanes)) == 0xFFFF;
    };
    const auto permute = [](const float *from, __m512i offsets, float *to) {
        _mm512_storeu_ps(to, _mm512_maskz_permutexvar_ps(0xFFFF, offsets, _mm512_loadu_ps(from)));
    };
#else
    constexpr size_t lanes = 8;
    const auto offsets_at = [&](size_t at) {
        const __m256i first = _mm256_set1_epi32(places[at]);
        return _mm256_sub_epi32(_mm256_loadu_si256(reinterpret_cast<const __m256i *>(places + at)), first);
    };
    const auto lie_together = [](__m256i offsets) {
        return _mm256_testz_si256(offsets, _mm256_set1_epi32(~static_cast<int32_t>(lanes - 1))) != 0;
    };
    const auto permute = [](const float *from, __m256i offsets, float *to) {
        _mm256_storeu_ps(to, _mm256_permutevar8x32_ps(_mm256_loadu_ps(from), offsets));
    };
#endif
    for (; x + lanes <= count; x += lanes) {
        // Columns that take their values from one vector: a permutation for each row.
        if (const auto offsets = offsets_at(x); lie_together(offsets)) {
            for (size_t row = 0; row < 4; ++row) permute(values + places[x] + row, offsets, rows[row] + x);
        } else {
            gather_fours_apart(values, places, rows, x, x + lanes);
        }
    }
#endif
    gather_fours_apart(values, places, rows, x, count);
}

void bicubic_row(const float *values, const int32_t *places, const float *fractions, uint8_t *dst, size_t count) {
    float rows[4][block_columns];
    gather_fours(values, places, rows, count);
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) {
        const float value = catmull_rom(rows[0][x], rows[1][x], rows[2][x], rows[3][x], fractions[x]);
        dst[x] = static_cast<uint8_t>(static_cast<int32_t>(clamp_nan_high(value, 0.0F, 255.0F)));
    }
}
