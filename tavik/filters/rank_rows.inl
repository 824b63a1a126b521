#if TAVIK_LEVEL >= TAVIK_SSE2
#include "tavik/frame/byte_vector.inl"
using Bytes = ByteVector;
#else
using Bytes = uint8_t;
inline uint8_t load(const uint8_t *from) { return *from; }
inline void store(uint8_t *to, uint8_t value) { *to = value; }
inline uint8_t minimum(uint8_t a, uint8_t b) { return std::min(a, b); }
inline uint8_t maximum(uint8_t a, uint8_t b) { return std::max(a, b); }
#endif

// Asks for what is `distance` bytes further on: what is walked down lies too far apart for the processor to see a
// pattern.
inline void fetch(const uint8_t *from, size_t distance) { prefetch_line(reinterpret_cast<uintptr_t>(from) + distance); }

struct Largest {
    static constexpr uint8_t of_none = 0;
    static Bytes of(Bytes a, Bytes b) { return maximum(a, b); }
};

struct Smallest {
    static constexpr uint8_t of_none = 255;
    static Bytes of(Bytes a, Bytes b) { return minimum(a, b); }
};

// One sample of each row of a strip.
struct Column {
    Bytes parts[strip_rows / sizeof(Bytes)];

    static Column of_value(uint8_t value) {
        uint8_t samples[strip_rows];
        std::memset(samples, value, strip_rows);
        return from(samples);
    }
    static Column from(const uint8_t *samples) {
        Column column;
        for (size_t i = 0; i < std::size(column.parts); ++i) column.parts[i] = load(samples + i * sizeof(Bytes));
        return column;
    }
    void to(uint8_t *samples) const {
        for (size_t i = 0; i < std::size(parts); ++i) store(samples + i * sizeof(Bytes), parts[i]);
    }
};

template <class Rank> Column rank(const Column &a, const Column &b) {
    Column result;
    for (size_t i = 0; i < std::size(a.parts); ++i) result.parts[i] = Rank::of(a.parts[i], b.parts[i]);
    return result;
}

#if TAVIK_LEVEL >= TAVIK_SSE2

// Transposes 16 × 16 bytes. Interleaving the first half of the rows with the second turns the places of bytes by one
// bit from the column's number to the row's; after four rounds they have changed places.
inline void transpose_block(const uint8_t *src, size_t stride, uint8_t *dst) {
    __m128i rows[16];
    for (size_t i = 0; i < 16; ++i) {
        rows[i] = _mm_loadu_si128(reinterpret_cast<const __m128i *>(src + i * stride));
        fetch(src + i * stride, 64);
    }
    for (int round = 0; round < 4; ++round) {
        __m128i mixed[16];
        for (size_t i = 0; i < 8; ++i) {
            mixed[2 * i] = _mm_unpacklo_epi8(rows[i], rows[i + 8]);
            mixed[2 * i + 1] = _mm_unpackhi_epi8(rows[i], rows[i + 8]);
        }
        std::memcpy(rows, mixed, sizeof rows);
    }
    for (size_t i = 0; i < 16; ++i) _mm_storeu_si128(reinterpret_cast<__m128i *>(dst + i * strip_rows), rows[i]);
}

#endif

// The columns of a strip, transposed when they are first asked for. Two neighbouring tiles are kept, so that going
// back and forth across their border costs nothing.
class Columns {
  public:
    explicit Columns(const Strip &rows_of_strip) : strip(rows_of_strip) {}

    Column operator[](size_t x) {
        const size_t tile = x / tile_columns;
        if (held[tile % 2] != tile) {
            transpose(tile * tile_columns, tiles[tile % 2]);
            held[tile % 2] = tile;
        }
        return Column::from(tiles[tile % 2] + x % tile_columns * strip_rows);
    }

  private:
    static constexpr size_t tile_columns = 64;

    void transpose(size_t first, uint8_t *tile) const {
        const size_t count = std::min(tile_columns, strip.columns - first);
        const auto transpose_samples = [&](size_t begin_y, size_t end_y, size_t begin_x) {
            for (size_t y = begin_y; y < end_y; ++y)
                for (size_t x = begin_x; x < count; ++x)
                    tile[x * strip_rows + y] = strip.src[y * strip.columns + first + x];
        };
        size_t y = 0;
#if TAVIK_LEVEL >= TAVIK_SSE2
        for (; y + 16 <= strip.rows; y += 16) {
            size_t x = 0;
            for (; x + 16 <= count; x += 16)
                transpose_block(strip.src + y * strip.columns + first + x, strip.columns, tile + x * strip_rows + y);
            transpose_samples(y, y + 16, x);
        }
#endif
        transpose_samples(y, strip.rows, 0);
    }

    const Strip &strip;
    size_t held[2] = {SIZE_MAX, SIZE_MAX};
    alignas(strip_rows) uint8_t tiles[2][tile_columns * strip_rows];
};

// The rows of dst that a strip's columns become.
class TransposedStrip {
  public:
    explicit TransposedStrip(const Strip &rows_of_strip) : strip(rows_of_strip) {}

    Column get(size_t x) const {
        const uint8_t *row = strip.dst + x * strip.dst_stride;
        if (strip.rows == strip_rows) return Column::from(row);
        uint8_t samples[strip_rows] = {};
        std::memcpy(samples, row, strip.rows);
        return Column::from(samples);
    }

    void put(size_t x, const Column &column) const {
        uint8_t *row = strip.dst + x * strip.dst_stride;
        fetch(row, 24 * strip.dst_stride);
        if (strip.rows == strip_rows) {
            column.to(row);
            return;
        }
        uint8_t samples[strip_rows];
        column.to(samples);
        std::memcpy(row, samples, strip.rows);
    }

  private:
    const Strip &strip;
};

// The span of x is x - radius .. x + radius - 1. The row is cut into blocks as long as a span, so that each span
// consists of the end of one block and the start of the next. The ranks of the ends are left in dst, walking back over
// a block, and joined with those of the starts, walking over the next one; the time does not depend on the radius.
// Source: M. van Herk, "A Fast Algorithm for Local Minimum and Maximum Filters on Rectangular and Octagonal Kernels",
// 1992.
template <class Rank> void running_rank(const Strip &strip, size_t radius) {
    Columns columns(strip);
    const TransposedStrip dst(strip);
    const size_t span = 2 * radius;
    for (size_t start = 0; start < strip.columns; start += span) {
        Column running = Column::of_value(Rank::of_none);
        for (size_t end = start + 1; end < start + span; ++end) {
            if (end <= strip.columns) running = rank<Rank>(running, columns[end - 1]);
            if (end < radius) continue;
            const size_t x = end - radius;
            if (x >= strip.columns) break;
            dst.put(x, start == 0 ? running : rank<Rank>(running, dst.get(x)));
        }
        running = Column::of_value(Rank::of_none);
        for (size_t x = std::min(start + span, strip.columns); x-- > start;) {
            running = rank<Rank>(running, columns[x]);
            if (x + radius < strip.columns) dst.put(x + radius, running);
        }
    }
}

void running_maximum(const Strip &strip, size_t radius) { running_rank<Largest>(strip, radius); }

void running_minimum(const Strip &strip, size_t radius) { running_rank<Smallest>(strip, radius); }
