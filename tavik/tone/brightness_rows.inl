#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

void scale_in_16_bits(const uint8_t *src, uint8_t *dst, size_t count, uint16_t factor) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    const uint16_t byte_bits = 8;
    for (; i + vector_bytes <= count; i += vector_bytes)
        store(dst + i, in_words([&](Words bytes) { return bytes * factor >> byte_bits; }, load(src + i)));
#endif
    for (; i < count; ++i) dst[i] = static_cast<uint8_t>(static_cast<uint16_t>(src[i] * factor) >> 8);
}

// Adds a positive amount or subtracts a negative one's size, within a byte.
void add_clamped(uint8_t *plane, size_t count, uint8_t raise, uint8_t lower) {
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; i + vector_bytes <= count; i += vector_bytes) {
        const ByteVector raised = add_saturated(load(plane + i), every_byte(raise));
        store(plane + i, subtract_saturated(raised, every_byte(lower)));
    }
#endif
    for (; i < count; ++i) plane[i] = static_cast<uint8_t>(clamp_to_byte(plane[i] + raise - lower));
}

#if TAVIK_LEVEL >= TAVIK_SSE2

// Greys of vectors of bytes by weights that are bytes. The sum times the scale stays below 2^24, so single precision
// holds it exactly.
class VectorGrey {
  public:
    explicit VectorGrey(const GreyWeights &weights)
        : red_green(Longs{} + static_cast<int32_t>(weights.g << 16 | weights.r)),
          blue(Longs{} + static_cast<int32_t>(weights.b)),
          scale(every_float(static_cast<float>(weights.scale))) {}

    ByteVector operator()(ByteVector r, ByteVector g, ByteVector b) const {
        const ByteVector zero = {};
        const auto half = [&](ByteVector rg_bytes, ByteVector b_words) {
            return pack_longs(grey(interleave_low_bytes(rg_bytes, zero), interleave_low_words(b_words, zero)),
                              grey(interleave_high_bytes(rg_bytes, zero), interleave_high_words(b_words, zero)));
        };
        return pack_words(half(interleave_low_bytes(r, g), interleave_low_bytes(b, zero)),
                          half(interleave_high_bytes(r, g), interleave_high_bytes(b, zero)));
    }

  private:
    // Of 16-bit red and green in turn, and 32-bit blue.
    ByteVector grey(ByteVector rg, ByteVector b) const {
        const auto sum = reinterpret_cast<Longs>(multiply_add_pairs(rg, reinterpret_cast<ByteVector>(red_green))) +
                         reinterpret_cast<Longs>(multiply_add_pairs(b, reinterpret_cast<ByteVector>(blue)));
        const auto scaled = reinterpret_cast<Longs>(truncate(__builtin_convertvector(sum, FloatVector) * scale));
        return reinterpret_cast<ByteVector>(scaled >> 16);
    }

    Longs red_green;
    Longs blue;
    FloatVector scale;
};

#endif

void weighted_grey(const GreyWeights &weights, const uint8_t *r, const uint8_t *g, const uint8_t *b, uint8_t *dst1,
                   uint8_t *dst2, uint8_t *dst3, size_t count) {
    const uint32_t wr = weights.r;
    const uint32_t wg = weights.g;
    const uint32_t wb = weights.b;
    const uint32_t scale = weights.scale;
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (wr <= 255 && wg <= 255 && wb <= 255) {
        const VectorGrey vector_grey(weights);
        for (; i + vector_bytes <= count; i += vector_bytes) {
            const ByteVector grey = vector_grey(load(r + i), load(g + i), load(b + i));
            for (uint8_t *dst : {dst1, dst2, dst3}) store(dst + i, grey);
        }
    }
#endif
    TAVIK_INDEPENDENT
    for (; i < count; ++i) {
        const auto grey = static_cast<uint8_t>(((b[i] * wb + g[i] * wg + r[i] * wr) * scale) >> 16);
        dst1[i] = grey;
        dst2[i] = grey;
        dst3[i] = grey;
    }
}
