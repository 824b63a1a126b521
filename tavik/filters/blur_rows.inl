// A block is 16 × 16 samples of 16 bits, row by row: 16 lines of samples are blurred side by side.

inline void transpose_block(uint16_t *block) {
#if TAVIK_LEVEL >= TAVIK_SSE2
    // In quarters of 8 × 8; three rounds of interleaving each row with the one four below transpose a quarter.
    const auto load_quarter = [&](size_t row, size_t column, __m128i *rows) {
        for (size_t i = 0; i < 8; ++i)
            rows[i] = _mm_load_si128(reinterpret_cast<const __m128i *>(block + (row + i) * block_side + column));
        for (int round = 0; round < 3; ++round) {
            __m128i mixed[8];
            for (size_t i = 0; i < 4; ++i) {
                mixed[2 * i] = _mm_unpacklo_epi16(rows[i], rows[i + 4]);
                mixed[2 * i + 1] = _mm_unpackhi_epi16(rows[i], rows[i + 4]);
            }
            std::memcpy(rows, mixed, sizeof mixed);
        }
    };
    const auto store_quarter = [&](size_t row, size_t column, const __m128i *rows) {
        for (size_t i = 0; i < 8; ++i)
            _mm_store_si128(reinterpret_cast<__m128i *>(block + (row + i) * block_side + column), rows[i]);
    };
    __m128i first[8];
    __m128i second[8];
    load_quarter(0, 0, first);
    store_quarter(0, 0, first);
    load_quarter(8, 8, first);
    store_quarter(8, 8, first);
    load_quarter(0, 8, first);
    load_quarter(8, 0, second);
    store_quarter(8, 0, first);
    store_quarter(0, 8, second);
#else
    for (size_t y = 0; y < block_side; ++y)
        for (size_t x = 0; x < y; ++x) std::swap(block[y * block_side + x], block[x * block_side + y]);
#endif
}

// The sums of the windows of 16 lines. They stay below 2^24, where floats hold integers exactly.
#if TAVIK_LEVEL >= TAVIK_AVX512

class WindowSums {
  public:
    void add(const uint16_t *samples) { sums = _mm512_add_epi32(sums, widened(samples)); }
    void subtract(const uint16_t *samples) { sums = _mm512_sub_epi32(sums, widened(samples)); }
    void store_means(float per_sample, uint16_t *to) const {
        const __m512 scaled = _mm512_mul_ps(_mm512_maskz_cvtepi32_ps(all, sums), _mm512_set1_ps(per_sample));
        const __m512i means = _mm512_maskz_cvttps_epi32(all, _mm512_add_ps(scaled, _mm512_set1_ps(0.5F)));
        _mm256_store_si256(reinterpret_cast<__m256i *>(to), _mm512_maskz_cvtepi32_epi16(all, means));
    }

  private:
    // The compiler warns of its own intrinsics without a mask.
    static constexpr __mmask16 all = 0xFFFF;

    static __m512i widened(const uint16_t *samples) {
        return _mm512_maskz_cvtepu16_epi32(all, _mm256_load_si256(reinterpret_cast<const __m256i *>(samples)));
    }

    __m512i sums = {};
};

#elif TAVIK_LEVEL >= TAVIK_AVX2

class WindowSums {
  public:
    void add(const uint16_t *samples) { change<1>(samples); }
    void subtract(const uint16_t *samples) { change<-1>(samples); }
    void store_means(float per_sample, uint16_t *to) const {
        const auto mean = [&](__m256i sum) {
            const __m256 scaled = _mm256_mul_ps(_mm256_cvtepi32_ps(sum), _mm256_set1_ps(per_sample));
            return _mm256_cvttps_epi32(_mm256_add_ps(scaled, _mm256_set1_ps(0.5F)));
        };
        const __m256i words = _mm256_packus_epi32(mean(low), mean(high));
        _mm256_store_si256(reinterpret_cast<__m256i *>(to), _mm256_permute4x64_epi64(words, 0xD8));
    }

  private:
    template <int sign> void change(const uint16_t *samples) {
        const auto *from = reinterpret_cast<const __m128i *>(samples);
        const __m256i first = _mm256_cvtepu16_epi32(_mm_load_si128(from));
        const __m256i second = _mm256_cvtepu16_epi32(_mm_load_si128(from + 1));
        low = sign > 0 ? _mm256_add_epi32(low, first) : _mm256_sub_epi32(low, first);
        high = sign > 0 ? _mm256_add_epi32(high, second) : _mm256_sub_epi32(high, second);
    }

    __m256i low = {};
    __m256i high = {};
};

#elif TAVIK_LEVEL >= TAVIK_SSE2

class WindowSums {
  public:
    void add(const uint16_t *samples) { change<1>(samples); }
    void subtract(const uint16_t *samples) { change<-1>(samples); }
    void store_means(float per_sample, uint16_t *to) const {
        const auto mean = [&](__m128i sum) {
            const __m128 scaled = _mm_mul_ps(_mm_cvtepi32_ps(sum), _mm_set1_ps(per_sample));
            return _mm_cvttps_epi32(_mm_add_ps(scaled, _mm_set1_ps(0.5F)));
        };
        for (int half = 0; half < 2; ++half) {
            // There is no unsigned saturation here; shifted by half the range the signed one changes nothing.
            const __m128i middle = _mm_set1_epi32(0x8000);
            const __m128i words = _mm_packs_epi32(_mm_sub_epi32(mean(sums[2 * half]), middle),
                                                  _mm_sub_epi32(mean(sums[2 * half + 1]), middle));
            _mm_store_si128(reinterpret_cast<__m128i *>(to) + half, _mm_xor_si128(words, _mm_set1_epi16(-0x8000)));
        }
    }

  private:
    template <int sign> void change(const uint16_t *samples) {
        for (int half = 0; half < 2; ++half) {
            const __m128i words = _mm_load_si128(reinterpret_cast<const __m128i *>(samples) + half);
            const __m128i low = _mm_unpacklo_epi16(words, _mm_setzero_si128());
            const __m128i high = _mm_unpackhi_epi16(words, _mm_setzero_si128());
            __m128i *sum = sums + 2 * half;
            sum[0] = sign > 0 ? _mm_add_epi32(sum[0], low) : _mm_sub_epi32(sum[0], low);
            sum[1] = sign > 0 ? _mm_add_epi32(sum[1], high) : _mm_sub_epi32(sum[1], high);
        }
    }

    __m128i sums[4] = {};
};

#else

class WindowSums {
  public:
    void add(const uint16_t *samples) {
        for (size_t i = 0; i < block_side; ++i) sums[i] += samples[i];
    }
    void subtract(const uint16_t *samples) {
        for (size_t i = 0; i < block_side; ++i) sums[i] -= samples[i];
    }
    void store_means(float per_sample, uint16_t *to) const {
        for (size_t i = 0; i < block_side; ++i)
            to[i] = static_cast<uint16_t>(truncate(static_cast<float>(sums[i]) * per_sample + 0.5F));
    }

  private:
    int32_t sums[block_side] = {};
};

#endif

// One box pass along 16 lines, in place.
inline void blur_lines_once(const Lines &lines, size_t radius) {
    // What the window has yet to leave behind is kept from being overwritten.
    alignas(64) uint16_t kept[(largest_radius + 1) * block_side];
    const float per_sample = 1.0F / static_cast<float>(2 * radius + 1);
    const size_t last = lines.length - 1;
    WindowSums sums;
    for (size_t i = 0; i <= radius; ++i) {
        sums.add(lines.first);
        std::memcpy(kept + i * block_side, lines.first, block_side * sizeof *kept);
    }
    // Beyond the end the last sample enters again; it is the last to be overwritten.
    size_t entering = 0;
    size_t entered = 0;
    const auto enter = [&] {
        if (entered < last) entering += lines.step(entered++);
        sums.add(lines.first + entering);
    };
    for (size_t i = 1; i <= radius; ++i) enter();
    uint16_t *const end_of_ring = kept + (radius + 1) * block_side;
    uint16_t *oldest = kept;
    size_t at = 0;
    for (size_t i = 0; i <= last; at += lines.step(i++)) {
        uint16_t *here = lines.first + at;
        std::memcpy(oldest, here, block_side * sizeof *here);
        oldest += block_side;
        if (oldest == end_of_ring) oldest = kept;
        sums.store_means(per_sample, here);
        sums.subtract(oldest);
        enter();
    }
}

void blur_lines(const Lines &lines, size_t radius, int32_t passes) {
    for (int32_t pass = 0; pass < passes; ++pass) blur_lines_once(lines, radius);
}

void transpose_blocks(uint16_t *blocks, size_t count) {
    for (size_t i = 0; i < count; ++i) transpose_block(blocks + i * block_samples);
}

// Bytes to samples of eight fraction bits and back, 16 at a time.
#if TAVIK_LEVEL >= TAVIK_SSE2
inline void widen_sixteen(const uint8_t *src, uint16_t *dst) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(src));
    auto *to = reinterpret_cast<__m128i *>(dst);
    _mm_store_si128(to, _mm_unpacklo_epi8(_mm_setzero_si128(), bytes));
    _mm_store_si128(to + 1, _mm_unpackhi_epi8(_mm_setzero_si128(), bytes));
}

inline void narrow_sixteen(const uint16_t *src, uint8_t *dst) {
    const auto rounded = [&](int half) {
        const __m128i words = _mm_load_si128(reinterpret_cast<const __m128i *>(src) + half);
        return _mm_srli_epi16(_mm_add_epi16(words, _mm_set1_epi16(128)), 8);
    };
    _mm_storeu_si128(reinterpret_cast<__m128i *>(dst), _mm_packus_epi16(rounded(0), rounded(1)));
}
#endif

inline void widen(const uint8_t *src, uint16_t *dst, size_t count) {
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (count == block_side) return widen_sixteen(src, dst);
#endif
    for (size_t x = 0; x < count; ++x) dst[x] = static_cast<uint16_t>(src[x] << 8);
}

inline void narrow(const uint16_t *src, uint8_t *dst, size_t count) {
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (count == block_side) return narrow_sixteen(src, dst);
#endif
    for (size_t x = 0; x < count; ++x) dst[x] = static_cast<uint8_t>((src[x] + 128) >> 8);
}

// A row of bytes to one row of each of the blocks side by side.
void widen_row(const uint8_t *src, size_t count, uint16_t *row_of_first_block) {
    for (size_t begin = 0; begin < count; begin += block_side)
        widen(src + begin, row_of_first_block + begin * block_side, std::min(count - begin, block_side));
}

// `columns` columns of blocks side by side to rows of bytes.
void narrow_lines(const Lines &lines, size_t columns, uint8_t *dst, size_t stride) {
    size_t at = 0;
    for (size_t y = 0; y < lines.length; at += lines.step(y++)) {
        const uint16_t *row = lines.first + at;
        for (size_t begin = 0; begin < columns; begin += block_side)
            narrow(row + begin * block_side, dst + y * stride + begin, std::min(columns - begin, block_side));
    }
}
