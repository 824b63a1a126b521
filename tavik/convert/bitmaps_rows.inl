#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

void pack_bitmap(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint32_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes)
        store_interleaved(reinterpret_cast<uint8_t *>(dst + i), load(b + i), load(g + i), load(r + i), ByteVector{});
#endif
    for (; i < count; ++i) dst[i] = uint32_t{r[i]} << 16 | uint32_t{g[i]} << 8 | b[i];
}

void pack_quads(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes) {
        const ByteVector red = load(r + i);
        const ByteVector green = load(g + i);
        const ByteVector blue = load(b + i);
        store_interleaved(dst + 4 * i, red, green, blue, mean_of_three(red, green, blue));
    }
#endif
    for (; i < count; ++i) {
        dst[4 * i] = r[i];
        dst[4 * i + 1] = g[i];
        dst[4 * i + 2] = b[i];
        dst[4 * i + 3] = static_cast<uint8_t>(mean_of_three(r[i], g[i], b[i]));
    }
}

void unpack_quads(uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *src, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        r[i] = src[4 * i];
        g[i] = src[4 * i + 1];
        b[i] = src[4 * i + 2];
    }
}
