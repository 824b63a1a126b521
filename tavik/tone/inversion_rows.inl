#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

void invert_value(uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes) {
        const ByteVector mean = mean_of_three(load(r + i), load(g + i), load(b + i));
        // 255 - 2 * mean, split by its sign; one of the two is 0.
        const ByteVector rest = subtract_saturated(every_byte(255), mean);
        const ByteVector raise = subtract_saturated(rest, mean);
        const ByteVector lower = subtract_saturated(mean, rest);
        for (uint8_t *plane : {r, g, b})
            store(plane + i, subtract_saturated(add_saturated(load(plane + i), raise), lower));
    }
#endif
    for (; i < count; ++i) {
        const int32_t shift = 255 - 2 * mean_of_three(r[i], g[i], b[i]);
        for (uint8_t *plane : {r, g, b}) plane[i] = static_cast<uint8_t>(clamp_to_byte(plane[i] + shift));
    }
}

void cancel_value(uint8_t *r, uint8_t *g, uint8_t *b, size_t count) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes) {
        const ByteVector mean = mean_of_three(load(r + i), load(g + i), load(b + i));
        for (uint8_t *plane : {r, g, b}) store(plane + i, subtract_saturated(load(plane + i), mean));
    }
#endif
    for (; i < count; ++i) {
        const int32_t mean = mean_of_three(r[i], g[i], b[i]);
        for (uint8_t *plane : {r, g, b}) plane[i] = static_cast<uint8_t>(std::max(plane[i] - mean, 0));
    }
}
