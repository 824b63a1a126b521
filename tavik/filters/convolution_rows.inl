#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
#endif

inline uint8_t convolve_sample(const Kernel &kernel, const ThreeRows &src, size_t left, size_t middle, size_t right) {
    const auto &w = kernel.weights;
    uint32_t sum = 0;
    const auto add_row = [&](const uint8_t *row, size_t first) {
        sum += static_cast<uint32_t>(w[first]) * row[left] + static_cast<uint32_t>(w[first + 1]) * row[middle] +
               static_cast<uint32_t>(w[first + 2]) * row[right];
    };
    add_row(src.above, 0);
    add_row(src.middle, 3);
    add_row(src.below, 6);
    const int32_t quotient = tavik::truncate(static_cast<int32_t>(sum) * kernel.reciprocal);
    return static_cast<uint8_t>(clamp_to_byte(wrap_add(quotient, kernel.bias)));
}

#if TAVIK_LEVEL >= TAVIK_SSE2

// Sums of a light kernel over vectors of bytes. Samples and weights are multiplied in pairs of 16 bits: a column's
// upper two, and the lower ones of two columns.
class LightConvolution {
  public:
    explicit LightConvolution(const Kernel &light_kernel)
        : bias(WrappingLongs{} + static_cast<uint32_t>(light_kernel.bias)),
          reciprocal(every_float(light_kernel.short_reciprocal)) {
        const auto &w = light_kernel.weights;
        weights[0] = pair(w[0], w[3]);
        weights[1] = pair(w[1], w[4]);
        weights[2] = pair(w[2], w[5]);
        weights[3] = pair(w[6], w[7]);
        weights[4] = pair(w[8], 0);
    }

    // Of the samples at the rows' pointers; those on either side are read too.
    ByteVector operator()(const uint8_t *above, const uint8_t *middle, const uint8_t *below) const {
        const ByteVector firsts[5] = {load(above - 1), load(above), load(above + 1), load(below - 1), load(below + 1)};
        const ByteVector seconds[5] = {load(middle - 1), load(middle), load(middle + 1), load(below), ByteVector{}};
        Longs sums[4] = {};
        for (int i = 0; i < 5; ++i) {
            const ByteVector zero = {};
            const ByteVector low = interleave_low_bytes(firsts[i], seconds[i]);
            const ByteVector high = interleave_high_bytes(firsts[i], seconds[i]);
            const ByteVector pairs[4] = {interleave_low_bytes(low, zero), interleave_high_bytes(low, zero),
                                         interleave_low_bytes(high, zero), interleave_high_bytes(high, zero)};
            for (int quarter = 0; quarter < 4; ++quarter)
                sums[quarter] += reinterpret_cast<Longs>(multiply_add_pairs(pairs[quarter], weights[i]));
        }
        return pack_words(pack_longs(finish(sums[0]), finish(sums[1])), pack_longs(finish(sums[2]), finish(sums[3])));
    }

  private:
    using WrappingLongs = uint32_t __attribute__((vector_size(sizeof(ByteVector))));

    static ByteVector pair(int32_t first, int32_t second) {
        const uint32_t bits = (static_cast<uint32_t>(second) << 16) | (static_cast<uint32_t>(first) & 0xFFFF);
        return reinterpret_cast<ByteVector>(Longs{} + static_cast<int32_t>(bits));
    }

    // Packing sees to the clamp.
    ByteVector finish(Longs sum) const {
        const FloatVector quotient = __builtin_convertvector(sum, FloatVector) * reciprocal;
        return reinterpret_cast<ByteVector>(reinterpret_cast<WrappingLongs>(truncate(quotient)) + bias);
    }

    ByteVector weights[5];
    WrappingLongs bias;
    FloatVector reciprocal;
};

#endif

// All columns but the first and the last.
void convolve_between_ends(const Kernel &kernel, ThreeRows src, uint8_t *dst, size_t columns) {
    size_t i = 1;
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (kernel.is_light && columns > 2) {
        const LightConvolution convolve(kernel);
        i += cover_with_vectors(columns - 2, [&](size_t at) {
            const size_t x = at + 1;
            store(dst + x, convolve(src.above + x, src.middle + x, src.below + x));
        });
    }
#endif
    // Copies that no store to dst can be taken to change.
    const Kernel same = kernel;
    const ThreeRows rows = src;
    const size_t last = columns - 1;
    TAVIK_INDEPENDENT
    for (; i < last; ++i) dst[i] = convolve_sample(same, rows, i - 1, i, i + 1);
}

// The first and the last column, whose neighbours outside are themselves.
void convolve_ends(const Kernel &kernel, ThreeRows src, uint8_t *dst, size_t columns) {
    const size_t last = columns - 1;
    dst[0] = convolve_sample(kernel, src, 0, 0, std::min(size_t{1}, last));
    dst[last] = convolve_sample(kernel, src, std::max(last, size_t{1}) - 1, last, last);
}
