#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
inline void read(const uint8_t *from, ByteVector &samples) { samples = load(from); }
inline void write(uint8_t *to, ByteVector samples) { store(to, samples); }
#endif

inline void read(const uint8_t *from, uint8_t &sample) { sample = *from; }
inline void write(uint8_t *to, uint8_t sample) { *to = sample; }
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

// The sorted columns of three rows: the rows of their lowest, of their middle and of their highest samples.
struct SortedColumns {
    static constexpr size_t most = 4096;
    // A median takes three columns.
    uint8_t lowest[most + 2];
    uint8_t middle[most + 2];
    uint8_t highest[most + 2];
};

template <class Bytes> void sort_columns_at(size_t x, const uint8_t *const rows[3], SortedColumns &sorted) {
    Bytes column[3];
    for (size_t row = 0; row < 3; ++row) read(rows[row] + x, column[row]);
    sort_three(column[0], column[1], column[2]);
    write(sorted.lowest + x, column[0]);
    write(sorted.middle + x, column[1]);
    write(sorted.highest + x, column[2]);
}

inline void sort_columns(const uint8_t *const rows[3], size_t count, SortedColumns &sorted) {
    size_t x = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    x = cover_with_vectors(count, [&](size_t at) { sort_columns_at<ByteVector>(at, rows, sorted); });
#endif
    for (; x < count; ++x) sort_columns_at<uint8_t>(x, rows, sorted);
}

// The median of nine is the median of three: the largest of the columns' lowest, the median of their middle ones and
// the smallest of their highest.
template <class Bytes> void write_median_at(size_t x, const SortedColumns &sorted, uint8_t *dst) {
    Bytes lowest[3];
    Bytes middle[3];
    Bytes highest[3];
    for (size_t column = 0; column < 3; ++column) {
        read(sorted.lowest + x + column, lowest[column]);
        read(sorted.middle + x + column, middle[column]);
        read(sorted.highest + x + column, highest[column]);
    }
    Bytes largest_low = maximum(maximum(lowest[0], lowest[1]), lowest[2]);
    Bytes smallest_high = minimum(minimum(highest[0], highest[1]), highest[2]);
    sort_three(middle[0], middle[1], middle[2]);
    sort_three(largest_low, middle[1], smallest_high);
    write(dst + x, middle[1]);
}

inline void merge_columns(const SortedColumns &sorted, uint8_t *dst, size_t count) {
    size_t x = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
    x = cover_with_vectors(count, [&](size_t at) { write_median_at<ByteVector>(at, sorted, dst); });
#endif
    for (; x < count; ++x) write_median_at<uint8_t>(x, sorted, dst);
}

// Samples [x] of `count` rows become the medians of [x] .. [x + 2] of theirs and the rows above and below.
void median_rows(const uint8_t *src, uint8_t *dst, size_t stride, size_t columns, size_t count) {
    SortedColumns sorted[2];
    for (size_t first = 0; first < columns; first += SortedColumns::most) {
        const size_t run = std::min(columns - first, SortedColumns::most);
        const auto sort_row = [&](size_t row) {
            const uint8_t *middle = src + row * stride + first;
            const uint8_t *const rows[3] = {middle - stride, middle, middle + stride};
            sort_columns(rows, run + 2, sorted[row % 2]);
        };
        // Sorted one row ahead: what has just been stored is slow to load at other places.
        sort_row(0);
        for (size_t row = 0; row < count; ++row) {
            if (row + 1 < count) sort_row(row + 1);
            merge_columns(sorted[row % 2], dst + row * stride + first, run);
        }
    }
}
