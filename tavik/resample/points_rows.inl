void lerp_points_along_row(const float *points, const int32_t *whole, const float *fractions, float *values,
                           size_t count) {
    for (size_t x = 0; x < count; ++x) {
        const float *left = points + 2 * static_cast<ptrdiff_t>(whole[x]);
        values[2 * x] = lerp(left[2] - left[0], left[0], fractions[x]);
        values[2 * x + 1] = lerp(left[3] - left[1], left[1], fractions[x]);
    }
}

void lerp_rows(const float *top, const float *bottom, float fraction, float *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) dst[x] = lerp(bottom[x] - top[x], top[x], fraction);
}
