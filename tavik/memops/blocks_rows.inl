#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

void add_blocks(const uint8_t *src, uint8_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes) store(dst + i, add_saturated(load(dst + i), load(src + i)));
#endif
    for (; i < count; ++i) dst[i] = static_cast<uint8_t>(std::min(dst[i] + src[i], 255));
}

void subtract_blocks(const uint8_t *src, uint8_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes)
        store(dst + i, subtract_saturated(load(dst + i), load(src + i)));
#endif
    for (; i < count; ++i) dst[i] = static_cast<uint8_t>(std::max(dst[i] - src[i], 0));
}

void multiply_blocks(const uint8_t *src, uint8_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const uint16_t byte_bits = 8;
    for (; i + vector_bytes <= count; i += vector_bytes)
        store(dst + i, in_words([&](Words a, Words b) { return a * b >> byte_bits; }, load(dst + i), load(src + i)));
#endif
    for (; i < count; ++i) dst[i] = static_cast<uint8_t>(dst[i] * src[i] >> 8);
}
