#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

// Adds the samples of six frames, each weighted. Before that those of the first three frames are raised by one
// amount and those of the last three by another, up to 255.
void add_frames(const uint8_t *const frames[6], uint8_t raise_first, uint8_t raise_last, const float weights[6],
                uint8_t *dst, size_t count) {
    const auto raise_of = [&](size_t frame) { return frame < 3 ? raise_first : raise_last; };
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; done + vector_bytes <= count; done += vector_bytes) {
        FloatQuarters sums{ByteVector{}};
        for (size_t k = 0; k < 6; ++k) {
            const FloatQuarters samples(add_saturated(load(frames[k] + done), every_byte(raise_of(k))));
            for (int quarter = 0; quarter < 4; ++quarter)
                sums.quarters[quarter] += weights[k] * samples.quarters[quarter];
        }
        store(dst + done, sums.low_bytes());
    }
#endif
    for (size_t i = done; i < count; ++i) {
        float sum = 0.0F;
        for (size_t k = 0; k < 6; ++k)
            sum += weights[k] * static_cast<float>(std::min(frames[k][i] + raise_of(k), 255));
        dst[i] = low_byte(truncate(sum));
    }
}
