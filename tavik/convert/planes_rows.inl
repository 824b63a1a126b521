void fill(uint32_t *dst, size_t count, uint32_t value) {
    for (size_t i = 0; i < count; ++i) dst[i] = value;
}

void char_to_float(const uint8_t *src, float *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = src[i];
}

void float_to_char(const float *src, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = low_byte(truncate(src[i]));
}

void float_to_char_clamp(const float *src, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = static_cast<uint8_t>(clamp_nan_high(src[i], 0.0F, 255.0F));
}

void char_to_long(const uint8_t *src, int32_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = src[i];
}

void long_to_char(const int32_t *src, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = low_byte(src[i]);
}
