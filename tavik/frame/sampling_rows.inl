#if TAVIK_LEVEL >= TAVIK_AVX2

// Eight positions of a plane of at least four samples. One gather of four bytes brings a sample and the one to its
// right. At the right and lower edges it brings something else, which has no weight there.
class BilinearGather {
  public:
    BilinearGather(const uint8_t *samples, int32_t width, int32_t height)
        : plane(samples),
          stride(_mm256_set1_epi32(width)),
          last_row(_mm256_set1_epi32(height - 1)),
          last_gather(_mm256_set1_epi32(width * height - 4)),
          x_max(_mm256_set1_ps(static_cast<float>(width - 1))),
          y_max(_mm256_set1_ps(static_cast<float>(height - 1))) {}

    __m256 operator()(__m256 x, __m256 y) const {
        const __m256 held_x = _mm256_max_ps(_mm256_min_ps(x, x_max), _mm256_setzero_ps());
        const __m256 held_y = _mm256_max_ps(_mm256_min_ps(y, y_max), _mm256_setzero_ps());
        const __m256i column = _mm256_cvttps_epi32(held_x);
        const __m256i row = _mm256_cvttps_epi32(held_y);
        const __m256 part_x = held_x - _mm256_cvtepi32_ps(column);
        const __m256 part_y = held_y - _mm256_cvtepi32_ps(row);
        const __m256i index = _mm256_add_epi32(_mm256_mullo_epi32(row, stride), column);
        const __m256i step = _mm256_and_si256(_mm256_cmpgt_epi32(last_row, row), stride);
        const __m256 top = across(index, part_x);
        const __m256 bottom = across(_mm256_add_epi32(index, step), part_x);
        return (bottom - top) * part_y + top;
    }

  private:
    __m256 across(__m256i index, __m256 part) const {
        const __m256i from = _mm256_min_epi32(index, last_gather);
        const __m256i beyond = _mm256_slli_epi32(_mm256_sub_epi32(index, from), 3);
        const __m256i samples =
            _mm256_srlv_epi32(_mm256_i32gather_epi32(reinterpret_cast<const int *>(plane), from, 1), beyond);
        const __m256i byte = _mm256_set1_epi32(255);
        const __m256 left = _mm256_cvtepi32_ps(_mm256_and_si256(samples, byte));
        const __m256 right = _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(samples, 8), byte));
        return (right - left) * part + left;
    }

    const uint8_t *plane;
    __m256i stride;
    __m256i last_row;
    __m256i last_gather;
    __m256 x_max;
    __m256 y_max;
};

#endif

void sample_bilinear(const uint8_t *plane, int32_t width, int32_t height, const float *x, const float *y, float *dst,
                     size_t count) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_AVX2
    if (width * height >= 4) {
        const BilinearGather gather(plane, width, height);
        for (; count - done >= 8; done += 8)
            _mm256_storeu_ps(dst + done, gather(_mm256_loadu_ps(x + done), _mm256_loadu_ps(y + done)));
    }
#endif
    for (size_t i = done; i < count; ++i) dst[i] = bilinear(plane, width, height, x[i], y[i]);
}

void sample_bilinear_wrapped(const uint8_t *plane, int32_t width, int32_t height, const float *x, const float *y,
                             float *dst, size_t count) {
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_AVX2
    if (width * height >= 4) {
        // Before the last column nothing wraps.
        const BilinearGather gather(plane, width, height);
        const __m256 last_column = _mm256_set1_ps(static_cast<float>(width - 1));
        for (; count - done >= 8; done += 8) {
            const __m256 across = _mm256_loadu_ps(x + done);
            if (_mm256_movemask_ps(_mm256_cmp_ps(across, last_column, _CMP_LT_OQ)) == 0xFF)
                _mm256_storeu_ps(dst + done, gather(across, _mm256_loadu_ps(y + done)));
            else
                for (size_t i = done; i < done + 8; ++i) dst[i] = bilinear_wrapped(plane, width, height, x[i], y[i]);
        }
    }
#endif
    for (size_t i = done; i < count; ++i) dst[i] = bilinear_wrapped(plane, width, height, x[i], y[i]);
}

void round_bytes(const float *src, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = round_to_byte(src[i]);
}
