#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

// Adds the samples of six frames, each weighted. Before that those of the first three frames are raised by one
// amount and those of the last three by another, up to 255.
void add_frames(const uint8_t *const frames[6], uint8_t raise_first, uint8_t raise_last, const float weights[6],
                uint8_t *dst, size_t count) {
    struct Term {
        const uint8_t *frame;
        float weight;

        float raised(size_t i, uint8_t raise) const {
            const auto room = static_cast<uint8_t>(~frame[i]);
            return weight * static_cast<float>(static_cast<uint8_t>(frame[i] + std::min(raise, room)));
        }
    };
    const Term a{frames[0], weights[0]};
    const Term b{frames[1], weights[1]};
    const Term c{frames[2], weights[2]};
    const Term d{frames[3], weights[3]};
    const Term e{frames[4], weights[4]};
    const Term f{frames[5], weights[5]};
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const ByteVector first_raises = every_byte(raise_first);
    const ByteVector last_raises = every_byte(raise_last);
    for (; done + vector_bytes <= count; done += vector_bytes) {
        ByteVector raised[6];
        for (size_t k = 0; k < 6; ++k)
            raised[k] = add_saturated(load(frames[k] + done), k < 3 ? first_raises : last_raises);
        // Every fourth byte at a time: shifting them into place is cheaper than widening neighbours.
        Longs bytes = {};
        for (int shift = 0; shift < 32; shift += 8) {
            FloatVector sum = {};
            for (size_t k = 0; k < 6; ++k) {
                const Longs samples = reinterpret_cast<Longs>(raised[k]) >> shift & 255;
                const FloatVector term = every_float(weights[k]) * __builtin_convertvector(samples, FloatVector);
                sum = k == 0 ? term : sum + term;
            }
            bytes |= (reinterpret_cast<Longs>(truncate(sum)) & 255) << shift;
        }
        store(dst + done, reinterpret_cast<ByteVector>(bytes));
    }
#endif
    for (size_t i = done; i < count; ++i) {
        const float first = a.raised(i, raise_first) + b.raised(i, raise_first) + c.raised(i, raise_first);
        const float sum = first + d.raised(i, raise_last) + e.raised(i, raise_last) + f.raised(i, raise_last);
        dst[i] = low_byte(truncate(sum));
    }
}
