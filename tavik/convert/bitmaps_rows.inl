#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

// Quads of three planes' samples and of what `fourth` makes of them. The destination is apart from the planes where
// there are vectors. Streamed quads go past the caches and are the caller's to fence.
template <class Fourth>
inline void interleave(const uint8_t *first, const uint8_t *second, const uint8_t *third, const Fourth &fourth,
                       uint8_t *dst, size_t count, [[maybe_unused]] bool streamed) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (count >= vector_bytes) {
        const auto put = [&](size_t at, uint8_t *quads, const auto &store_quads) {
            const ByteVector a = load(first + at);
            const ByteVector b = load(second + at);
            const ByteVector c = load(third + at);
            store_quads(quads, a, b, c, fourth(a, b, c));
        };
        const auto put_at = [&](size_t at, const auto &store_quads) { put(at, dst + 4 * at, store_quads); };
        const size_t to_vector = (vector_bytes - reinterpret_cast<uintptr_t>(dst) % vector_bytes) % vector_bytes;
        if (streamed && to_vector % 4 == 0) {
            // The quads beside the streamed vectors, which must not be written twice.
            const auto put_some = [&](size_t from, size_t at, size_t n) {
                uint8_t quads[4 * vector_bytes];
                put(from, quads, store_interleaved<store>);
                memcpy(dst + 4 * at, quads + 4 * (at - from), 4 * n);
            };
            i = to_vector / 4;
            put_some(0, 0, i);
            for (; i + vector_bytes <= count; i += vector_bytes) put_at(i, store_interleaved<stream>);
            put_some(count - vector_bytes, i, count - i);
            return;
        }
        for (; i + vector_bytes <= count; i += vector_bytes) put_at(i, store_interleaved<store>);
        // The last vector writes some quads again.
        if (i < count) put_at(count - vector_bytes, store_interleaved<store>);
        return;
    }
#endif
    for (; i < count; ++i) {
        dst[4 * i] = first[i];
        dst[4 * i + 1] = second[i];
        dst[4 * i + 2] = third[i];
        dst[4 * i + 3] = fourth(first[i], second[i], third[i]);
    }
}

void pack_bitmap(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count, bool streamed) {
    interleave(
        b, g, r, [](auto blue, auto, auto) { return decltype(blue){}; }, dst, count, streamed);
}

void pack_quads(const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst, size_t count, bool streamed) {
    const auto mean = [](auto red, auto green, auto blue) {
        return static_cast<decltype(red)>(mean_of_three(red, green, blue));
    };
    interleave(r, g, b, mean, dst, count, streamed);
}

void unpack_quads(uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *src, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        r[i] = src[4 * i];
        g[i] = src[4 * i + 1];
        b[i] = src[4 * i + 2];
    }
}
