#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

void fill(uint32_t *dst, size_t count, uint32_t value) {
    for (size_t i = 0; i < count; ++i) dst[i] = value;
}

void char_to_float(const uint8_t *src, float *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = src[i];
}

void float_to_char(const float *src, uint8_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const auto low_bits = reinterpret_cast<ByteVector>(Longs{} + 0xFF);
    for (; i + vector_bytes <= count; i += vector_bytes)
        store(dst + i, bytes_of_floats(src + i, [&](FloatVector value) { return truncate(value) & low_bits; }));
#endif
    for (; i < count; ++i) dst[i] = low_byte(truncate(src[i]));
}

void float_to_char_clamp(const float *src, uint8_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    // The upper bound also replaces NaN and what no 32-bit integer holds; packing sees to the lower one.
    const FloatVector high = every_float(255.0F);
    const auto clamped = [&](FloatVector value) { return truncate(minimum_else_second(value, high)); };
    for (; i + vector_bytes <= count; i += vector_bytes) store(dst + i, bytes_of_floats(src + i, clamped));
#endif
    for (; i < count; ++i) dst[i] = static_cast<uint8_t>(clamp_nan_high(src[i], 0.0F, 255.0F));
}

void char_to_long(const uint8_t *src, int32_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = src[i];
}

void long_to_char(const int32_t *src, uint8_t *dst, size_t count) {
    for (size_t i = 0; i < count; ++i) dst[i] = low_byte(src[i]);
}
