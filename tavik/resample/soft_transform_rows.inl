// Source positions of one sub-sample of each pixel of a run, off the pixel's centre by the offsets.
void transform_positions(const Affine &matrix, float offset_x, float offset_y, const PixelRun &run,
                         SourcePositions &from) {
    const Affine m = matrix;
    const float py = static_cast<float>(run.y) + offset_y;
    for (size_t i = 0; i < run.count; ++i) {
        const float px = static_cast<float>(run.x + static_cast<int32_t>(i)) + offset_x;
        from.x[i] = (m.xx * px + m.xy * py) + m.x;
        from.y[i] = (m.yx * px + m.yy * py) + m.y;
    }
}

#if TAVIK_LEVEL == TAVIK_AVX512

// Its 256-bit code is slower in the longer encoding.
using avx2::add_cubic_samples;

#else

void add_cubic_sample(const SourcePicture &src, const SourcePositions &from, size_t i, SubSamples &sums) {
    if (!src.contains(from.x[i], from.y[i])) return;
    ++sums.count[i];
    for (size_t plane = 0; plane < 3; ++plane)
        sums.planes[plane][i] += clamp(cubic_at(src, src.planes[plane], from.x[i], from.y[i]), 0.0F, 255.0F);
}

#if TAVIK_LEVEL >= TAVIK_AVX2

inline __m256 cubic(__m256 p1, __m256 a, __m256 b, __m256 c, __m256 t) {
    return p1 + (_mm256_set1_ps(0.5F) * t) * (c + t * (b + t * a));
}

inline __m256 cubic(const __m256 (&p)[4], __m256 t) {
    const __m256 a = (_mm256_set1_ps(3.0F) * (p[1] - p[2]) + p[3]) - p[0];
    const __m256 b = ((_mm256_set1_ps(2.0F) * p[0] - _mm256_set1_ps(5.0F) * p[1]) + _mm256_set1_ps(4.0F) * p[2]) - p[3];
    return cubic(p[1], a, b, p[2] - p[0], t);
}

// The same of four bytes in each lane: sums of bytes are exact in integers as they are in floats.
inline __m256 cubic_of_bytes(__m256i bytes, __m256 t) {
    const auto sum = [&](int8_t w0, int8_t w1, int8_t w2, int8_t w3) {
        const __m256i weights = _mm256_set1_epi32(static_cast<int32_t>(
            static_cast<uint8_t>(w0) | static_cast<uint8_t>(w1) << 8 | static_cast<uint8_t>(w2) << 16 |
            static_cast<uint32_t>(static_cast<uint8_t>(w3)) << 24));
        return _mm256_cvtepi32_ps(_mm256_madd_epi16(_mm256_maddubs_epi16(bytes, weights), _mm256_set1_epi16(1)));
    };
    return cubic(sum(0, 1, 0, 0), sum(-1, 3, -3, 1), sum(2, -5, 4, -1), sum(-1, 0, 1, 0), t);
}

inline __m256i hold(__m256i index, __m256i last) {
    return _mm256_max_epi32(_mm256_min_epi32(index, last), _mm256_setzero_si256());
}

// Adds the samples of eight pixels. Returns whether it could: a gather of four bytes brings the samples of a row where
// all four are in it.
inline bool add_eight_cubic_samples(const SourcePicture &src, const SourcePositions &from, size_t i, SubSamples &sums) {
    const __m256 x = _mm256_loadu_ps(&from.x[i]);
    const __m256 y = _mm256_loadu_ps(&from.y[i]);
    const auto inside = [&](__m256 position, float end) {
        return _mm256_and_ps(_mm256_cmp_ps(position, _mm256_set1_ps(-0.5F), _CMP_GE_OQ),
                             _mm256_cmp_ps(position, _mm256_set1_ps(end), _CMP_LT_OQ));
    };
    const __m256 counts = _mm256_and_ps(inside(x, src.x_end), inside(y, src.y_end));
    if (_mm256_testz_ps(counts, counts) != 0) return true;

    const __m256 whole_x = _mm256_floor_ps(x);
    const __m256 whole_y = _mm256_floor_ps(y);
    const __m256i left = _mm256_sub_epi32(_mm256_cvttps_epi32(whole_x), _mm256_set1_epi32(1));
    const __m256i top = _mm256_sub_epi32(_mm256_cvttps_epi32(whole_y), _mm256_set1_epi32(1));
    const __m256i held_left = hold(left, _mm256_set1_epi32(src.width - 4));
    if (_mm256_testc_ps(_mm256_castsi256_ps(_mm256_cmpeq_epi32(left, held_left)), counts) == 0) return false;

    __m256i index[4];
    for (int32_t k = 0; k < 4; ++k) {
        const __m256i row = hold(_mm256_add_epi32(top, _mm256_set1_epi32(k)), _mm256_set1_epi32(src.height - 1));
        index[k] = _mm256_add_epi32(_mm256_mullo_epi32(row, _mm256_set1_epi32(src.width)), held_left);
    }
    const __m256 part_x = x - whole_x;
    const __m256 part_y = y - whole_y;
    for (size_t plane = 0; plane < 3; ++plane) {
        const auto *samples = reinterpret_cast<const int *>(src.planes[plane]);
        __m256 rows[4];
        for (size_t k = 0; k < 4; ++k) rows[k] = cubic_of_bytes(_mm256_i32gather_epi32(samples, index[k], 1), part_x);
        const __m256 held =
            _mm256_max_ps(_mm256_min_ps(cubic(rows, part_y), _mm256_set1_ps(255.0F)), _mm256_setzero_ps());
        float *sum = &sums.planes[plane][i];
        _mm256_storeu_ps(sum, _mm256_loadu_ps(sum) + _mm256_and_ps(held, counts));
    }
    auto *count = reinterpret_cast<__m256i *>(&sums.count[i]);
    _mm256_storeu_si256(count, _mm256_sub_epi32(_mm256_loadu_si256(count), _mm256_castps_si256(counts)));
    return true;
}

#endif

void add_cubic_samples(const SourcePicture &src, const SourcePositions &from, size_t count, SubSamples &sums) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_AVX2
    for (; src.width >= 4 && count - done >= 8; done += 8)
        if (!add_eight_cubic_samples(src, from, done, sums))
            for (size_t i = done; i < done + 8; ++i) add_cubic_sample(src, from, i, sums);
#endif
    for (size_t i = done; i < count; ++i) add_cubic_sample(src, from, i, sums);
}

#endif

// `all` sub-samples to a pixel; those that did not count are of the background.
void mean_of_samples(const float *sum, const int32_t *counted, float background, int32_t all, uint8_t *dst,
                     size_t count) {
    const float share = 1.0F / static_cast<float>(all);
    for (size_t i = 0; i < count; ++i)
        dst[i] = round_to_byte((sum[i] + background * static_cast<float>(all - counted[i])) * share);
}

void share_of_samples(const int32_t *counted, int32_t all, uint8_t *dst, size_t count) {
    const float share = 1.0F / static_cast<float>(all);
    for (size_t i = 0; i < count; ++i) dst[i] = round_to_byte(static_cast<float>(255 * counted[i]) * share);
}
