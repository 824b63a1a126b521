#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
inline void read(const uint8_t *from, ByteVector &samples) { samples = load(from); }
#endif

inline void read(const uint8_t *from, uint8_t &sample) { sample = *from; }
inline uint8_t minimum(uint8_t a, uint8_t b) { return std::min(a, b); }
inline uint8_t maximum(uint8_t a, uint8_t b) { return std::max(a, b); }

template <class Bytes> void sort_three(Bytes &a, Bytes &b, Bytes &c) {
    const auto sort_two = [](Bytes &low, Bytes &high) {
        const Bytes smaller = minimum(low, high);
        high = maximum(low, high);
        low = smaller;
    };
    sort_two(a, b);
    sort_two(b, c);
    sort_two(a, b);
}

// The median of nine is the median of three: the largest of the columns' lowest, the median of their medians and the
// smallest of their highest.
template <class Bytes> void median_of_nine(const uint8_t *const rows[3], size_t i, Bytes &median) {
    Bytes low[3];
    Bytes middle[3];
    Bytes high[3];
    for (size_t column = 0; column < 3; ++column) {
        read(rows[0] + i + column, low[column]);
        read(rows[1] + i + column, middle[column]);
        read(rows[2] + i + column, high[column]);
        sort_three(low[column], middle[column], high[column]);
    }
    Bytes largest_low = maximum(maximum(low[0], low[1]), low[2]);
    Bytes smallest_high = minimum(minimum(high[0], high[1]), high[2]);
    sort_three(middle[0], middle[1], middle[2]);
    sort_three(largest_low, middle[1], smallest_high);
    median = middle[1];
}

// dst[i] is the median of [i] .. [i + 2] of the three rows.
void median_row(const uint8_t *above, const uint8_t *middle, const uint8_t *below, uint8_t *dst, size_t count) {
    const uint8_t *const rows[3] = {above, middle, below};
    size_t i = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    i = cover_with_vectors(count, [&](size_t at) {
        ByteVector median;
        median_of_nine(rows, at, median);
        store(dst + at, median);
    });
#endif
    for (; i < count; ++i) median_of_nine(rows, i, dst[i]);
}
