void divide_sums(const int32_t *sums, float inverse, uint8_t *dst, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) dst[x] = low_byte(truncate(inverse * static_cast<float>(sums[x])));
}

void move_spans(float *sums, const uint8_t *lead, const uint8_t *trail, size_t count) {
    TAVIK_INDEPENDENT
    for (size_t x = 0; x < count; ++x) sums[x] = sums[x] + lead[x] - trail[x];
}

void average_spans(float *sums, const uint8_t *lead, const uint8_t *trail, float inverse, uint8_t *dst, size_t count) {
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
