#if TAVIK_LEVEL >= TAVIK_SSE2

#include "tavik/frame/byte_vector.inl"

// Vectors of 16-byte lanes of each width that this level has.
inline void load(const uint8_t *from, __m128i &to) { to = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from)); }
inline void repeat_16(const uint8_t *from, __m128i &to) { load(from, to); }
inline __m128i absolute_differences(__m128i a, __m128i b) { return _mm_sad_epu8(a, b); }
#if TAVIK_LEVEL >= TAVIK_AVX2
inline void load(const uint8_t *from, __m256i &to) { to = _mm256_loadu_si256(reinterpret_cast<const __m256i *>(from)); }
inline void repeat_16(const uint8_t *from, __m256i &to) {
    to = _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i *>(from)));
}
inline __m256i absolute_differences(__m256i a, __m256i b) { return _mm256_sad_epu8(a, b); }
#endif
#if TAVIK_LEVEL >= TAVIK_AVX512
inline void load(const uint8_t *from, __m512i &to) { to = _mm512_loadu_si512(from); }
inline void repeat_16(const uint8_t *from, __m512i &to) {
    to = _mm512_maskz_broadcast_i32x4(0xFFFF, _mm_loadu_si128(reinterpret_cast<const __m128i *>(from)));
}
inline __m512i absolute_differences(__m512i a, __m512i b) { return _mm512_sad_epu8(a, b); }
#endif

// The costs of places side by side, as many as the vector has bytes: each lane has places of its own, 16 from one lane
// to the next. No load reaches past the blocks.
template <class Vector>
inline void costs_of_group(const Vector *reference, const uint8_t *blocks, size_t stride, uint16_t *costs) {
    for (size_t x = 0; x < 16; x += 4) {
        Vector sums[4] = {}; // of 64-bit halves of lanes, each below 2^15
        for (size_t y = 0; y < 16; ++y) {
            for (size_t i = 0; i < 4; ++i) {
                Vector row;
                load(blocks + y * stride + x + i, row);
                sums[i] += absolute_differences(reference[y], row);
            }
        }
        // A cost fits 16 bits, so four of them are added and stored as one number.
        const Vector four = sums[0] + (sums[1] << 16) + (sums[2] << 32) + (sums[3] << 48);
        for (size_t lane = 0; lane < sizeof(Vector) / 16; ++lane) {
            const auto whole = static_cast<uint64_t>(four[2 * lane]) + static_cast<uint64_t>(four[2 * lane + 1]);
            std::memcpy(costs + 16 * lane + x, &whole, sizeof whole);
        }
    }
}

// Whether there were places enough; the last group may repeat some of the one before it.
template <class Vector>
inline bool costs_in_groups(const uint8_t *reference, const uint8_t *blocks, size_t stride, size_t count,
                            uint16_t *costs) {
    constexpr size_t group = sizeof(Vector);
    if (count < group) return false;
    Vector rows[16];
    for (size_t y = 0; y < 16; ++y) repeat_16(reference + y * stride, rows[y]);
    for (size_t x = 0; x + group <= count; x += group) costs_of_group(rows, blocks + x, stride, costs + x);
    const size_t last = count - group;
    if (count % group != 0) costs_of_group(rows, blocks + last, stride, costs + last);
    return true;
}

#endif

inline uint16_t block_cost(const uint8_t *a, const uint8_t *b, size_t stride) {
#if TAVIK_LEVEL >= TAVIK_SSE2
    __m128i sums = _mm_setzero_si128();
    for (size_t y = 0; y < 16; ++y) {
        __m128i row_a;
        __m128i row_b;
        load(a + y * stride, row_a);
        load(b + y * stride, row_b);
        sums = _mm_add_epi32(sums, absolute_differences(row_a, row_b));
    }
    return static_cast<uint16_t>(_mm_cvtsi128_si32(_mm_add_epi32(sums, _mm_srli_si128(sums, 8))));
#else
    uint16_t sum = 0;
    for (size_t y = 0; y < 16; ++y) {
        for (size_t x = 0; x < 16; ++x) {
            const int difference = a[y * stride + x] - b[y * stride + x];
            sum = static_cast<uint16_t>(sum + (difference < 0 ? -difference : difference));
        }
    }
    return sum;
#endif
}

inline void block_costs(const uint8_t *reference, const uint8_t *blocks, size_t stride, size_t count, uint16_t *costs) {
#if TAVIK_LEVEL >= TAVIK_AVX512
    if (costs_in_groups<__m512i>(reference, blocks, stride, count, costs)) return;
#endif
#if TAVIK_LEVEL >= TAVIK_AVX2
    if (costs_in_groups<__m256i>(reference, blocks, stride, count, costs)) return;
#endif
#if TAVIK_LEVEL >= TAVIK_SSE2
    if (costs_in_groups<__m128i>(reference, blocks, stride, count, costs)) return;
#endif
    for (size_t x = 0; x < count; ++x) costs[x] = block_cost(reference, blocks + x, stride);
}

// Adds the cost of each of up to `run_places` blocks that begin side by side.
void add_block_costs(const uint8_t *reference, const uint8_t *blocks, size_t stride, size_t count, int32_t *costs) {
    uint16_t of_plane[run_places];
    block_costs(reference, blocks, stride, count, of_plane);
    for (size_t x = 0; x < count; ++x) costs[x] += of_plane[x];
}

int32_t lowest_of(const int32_t *costs, size_t count) {
    int32_t lowest = costs[0];
    for (size_t x = 1; x < count; ++x) lowest = costs[x] < lowest ? costs[x] : lowest;
    return lowest;
}

// Sums and weights of so many terms fit 32 bits.
constexpr size_t most_terms = 256;

// The totals of blocks side by side.
struct WeightedTotals {
    uint64_t sums[run_places];
    uint64_t weights[run_places];
};

#if TAVIK_LEVEL >= TAVIK_SSE2

// Of as many blocks as a vector has bytes.
class WeightedGroup {
  public:
    // One sample of each block.
    void add(uint8_t sample, uint8_t own_alpha, ByteVector others, ByteVector alphas) {
        const ByteVector own = every_byte(sample);
        const ByteVector differences = subtract_saturated(own, others) | subtract_saturated(others, own);
        add_words(own_alpha, low_words(differences), low_words(alphas), sums, weights);
        add_words(own_alpha, high_words(differences), high_words(alphas), sums + 2, weights + 2);
    }

    // Adds what has gathered to the totals from block `first` on, and starts again.
    void flush(WeightedTotals &totals, size_t first) {
        flush(sums, totals.sums + first);
        flush(weights, totals.weights + first);
    }

  private:
    using Totals = uint32_t __attribute__((vector_size(sizeof(ByteVector))));

    static void add_words(uint16_t own_alpha, Words differences, Words alphas, Totals *to_sums, Totals *to_weights) {
        const Words products = alphas * own_alpha;
        add_longs(products * differences, multiply_high(products, differences), to_sums);
        add_longs(products, Words{}, to_weights);
    }
    static void add_longs(Words low, Words high, Totals *to) {
        const auto low_bytes = reinterpret_cast<ByteVector>(low);
        const auto high_bytes = reinterpret_cast<ByteVector>(high);
        to[0] += reinterpret_cast<Totals>(interleave_low_words(low_bytes, high_bytes));
        to[1] += reinterpret_cast<Totals>(interleave_high_words(low_bytes, high_bytes));
    }
    static void flush(Totals *from, uint64_t *to) {
        uint32_t in_order[vector_bytes];
        const auto part = [&](size_t i) { return reinterpret_cast<ByteVector>(from[i]); };
        store_lanes<store>(reinterpret_cast<uint8_t *>(in_order), part(0), part(1), part(2), part(3));
        for (size_t i = 0; i < vector_bytes; ++i) to[i] += in_order[i];
        for (size_t i = 0; i < 4; ++i) from[i] = Totals{};
    }

    Totals sums[4] = {};
    Totals weights[4] = {};
};

inline void add_weighted_group(const WeightedBlock &reference, const uint8_t *plane, const uint8_t *alpha,
                               WeightedTotals &totals, size_t first) {
    WeightedGroup group;
    size_t terms = 0;
    for (size_t row = 0; row < reference.side; ++row) {
        for (size_t at = row * reference.stride; at < row * reference.stride + reference.side; ++at) {
            if (reference.alpha[at] == 0) continue;
            group.add(reference.samples[at], reference.alpha[at], load(plane + first + at), load(alpha + first + at));
            if (++terms % most_terms == 0) group.flush(totals, first);
        }
    }
    group.flush(totals, first);
}

#endif

inline void add_weighted_place(const WeightedBlock &reference, const uint8_t *plane, const uint8_t *alpha,
                               uint64_t &sum, uint64_t &weight) {
    for (size_t row = 0; row < reference.side; ++row) {
        for (size_t at = row * reference.stride; at < row * reference.stride + reference.side; ++at) {
            const int difference = reference.samples[at] - plane[at];
            const uint32_t product = uint32_t{reference.alpha[at]} * alpha[at];
            sum += product * static_cast<uint32_t>(difference < 0 ? -difference : difference);
            weight += product;
        }
    }
}

// The costs of up to `run_places` blocks side by side.
void weighted_costs(const WeightedBlock &reference, const uint8_t *plane, const uint8_t *alpha, size_t count,
                    int32_t *costs) {
    WeightedTotals totals = {};
    size_t done = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    for (; count - done >= vector_bytes; done += vector_bytes)
        add_weighted_group(reference, plane, alpha, totals, done);
    if (done != 0 && done != count) {
        // The last group takes the place of the end of the one before it.
        const size_t last = count - vector_bytes;
        std::fill(totals.sums + last, totals.sums + count, 0);
        std::fill(totals.weights + last, totals.weights + count, 0);
        add_weighted_group(reference, plane, alpha, totals, last);
        done = count;
    }
#endif
    for (; done < count; ++done)
        add_weighted_place(reference, plane + done, alpha + done, totals.sums[done], totals.weights[done]);
    for (size_t i = 0; i < count; ++i)
        costs[i] =
            totals.weights[i] == 0 ? not_comparable : static_cast<int32_t>(totals.sums[i] * 256 / totals.weights[i]);
}
