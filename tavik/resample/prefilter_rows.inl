void divide_sums(const int32_t *sums, float inverse, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) dst[x] = low_byte(truncate(inverse * static_cast<float>(sums[x])));
}

// Moves the sum along a row, all of whose spans are inside it, and returns the last one.
uint16_t average_short_row(uint16_t sum, const uint8_t *lead, const uint8_t *trail, ShortDivision division,
                           uint8_t *dst, size_t count) {
    size_t x = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const __m128i zero = _mm_setzero_si128();
    const __m128i factor = _mm_set1_epi16(static_cast<int16_t>(division.factor));
    const __m128i shift = _mm_cvtsi32_si128(division.shift);
    // The sums of the first one, two and so on of eight differences.
    const auto running = [&](__m128i differences) {
        __m128i sums = _mm_add_epi16(differences, _mm_slli_si128(differences, 2));
        sums = _mm_add_epi16(sums, _mm_slli_si128(sums, 4));
        return _mm_add_epi16(sums, _mm_slli_si128(sums, 8));
    };
    const auto last_of = [&](__m128i sums) { return _mm_shuffle_epi32(_mm_shufflehi_epi16(sums, 0xFF), 0xFF); };
    const auto divide = [&](__m128i sums) { return _mm_srl_epi16(_mm_mulhi_epu16(sums, factor), shift); };
    __m128i before = _mm_set1_epi16(static_cast<int16_t>(sum));
    for (; x + 16 <= count; x += 16) {
        const __m128i added = _mm_loadu_si128(reinterpret_cast<const __m128i *>(lead + x));
        const __m128i taken = _mm_loadu_si128(reinterpret_cast<const __m128i *>(trail + x));
        const __m128i low = running(_mm_sub_epi16(_mm_unpacklo_epi8(added, zero), _mm_unpacklo_epi8(taken, zero)));
        const __m128i high = _mm_add_epi16(
            running(_mm_sub_epi16(_mm_unpackhi_epi8(added, zero), _mm_unpackhi_epi8(taken, zero))), last_of(low));
        const __m128i averages =
            _mm_packus_epi16(divide(_mm_add_epi16(low, before)), divide(_mm_add_epi16(high, before)));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(dst + x), averages);
        before = _mm_add_epi16(before, last_of(high));
    }
    sum = static_cast<uint16_t>(_mm_cvtsi128_si32(before));
#endif
    for (; x < count; ++x) {
        sum = static_cast<uint16_t>(sum + lead[x] - trail[x]);
        dst[x] = division(sum);
    }
    return sum;
}

void move_short_spans(uint16_t *sums, const uint8_t *lead, const uint8_t *trail, ShortDivision division, uint8_t *dst,
                      size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) {
        const auto sum = static_cast<uint16_t>(sums[x] + lead[x] - trail[x]);
        sums[x] = sum;
        dst[x] = division(sum);
    }
}

void move_spans(float *sums, const uint8_t *lead, const uint8_t *trail, float inverse, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) {
        const float sum = sums[x] + lead[x] - trail[x];
        sums[x] = sum;
        dst[x] = low_byte(truncate(inverse * sum));
    }
}

void lerp_to_bytes(float *filtered, const uint8_t *unfiltered, float amount, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) {
        const float sample = unfiltered[x];
        filtered[x] = (filtered[x] - sample) * amount + sample;
    }
}
