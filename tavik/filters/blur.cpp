#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "tavik/filters/filters.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

namespace {

constexpr std::size_t block_side = 16;
constexpr std::size_t block_samples = block_side * block_side;
constexpr std::size_t largest_radius = 127;

// 16 lines of samples side by side: rows of blocks that are `block_stride` samples apart.
struct Lines {
    uint16_t *first;
    std::size_t length;
    std::size_t block_stride;

    // From sample i of each line to the next.
    std::size_t step(std::size_t i) const {
        const std::size_t to_next_block = block_stride - block_samples + block_side;
        return i % block_side == block_side - 1 ? to_next_block : block_side;
    }
};

} // namespace

#define TAVIK_ROWS "tavik/filters/blur_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const Lines &lines, std::size_t radius, int32_t passes)> blur_lines =
    TAVIK_EVERY_LEVEL(blur_lines);
constexpr PerLevel<void(uint16_t *blocks, std::size_t count)> transpose_blocks = TAVIK_EVERY_LEVEL(transpose_blocks);
constexpr PerLevel<void(const uint8_t *src, std::size_t count, uint16_t *row_of_first_block)> widen_row =
    TAVIK_EVERY_LEVEL(widen_row);
constexpr PerLevel<void(const Lines &lines, std::size_t columns, uint8_t *dst, std::size_t stride)> narrow_lines =
    TAVIK_EVERY_LEVEL(narrow_lines);

constexpr std::size_t rounded_up(std::size_t samples, std::size_t to) { return (samples + to - 1) / to * to; }

constexpr std::size_t blocks_of(std::size_t samples) { return rounded_up(samples, block_side) / block_side; }

// Both phases keep a strip of columns in blocks: the first blurs along their rows, each block transposed meanwhile, the
// second along their columns.
struct Strip {
    std::size_t width, height, radius; // of the picture
    int32_t passes;
    // The columns that are blurred along rows, from the first of a block on, and those of them that are also blurred
    // along columns and written: the others' windows lack samples.
    std::size_t begin = 0, end = 0, written_begin = 0, written_end = 0;
    uint16_t *blocks = nullptr;

    std::size_t columns() const { return end - begin; }
    std::size_t blocks_across() const { return blocks_of(columns()); }
    // From one row of blocks to the next. An odd number of blocks, so that the blocks of a column lie in different sets
    // of the caches.
    std::size_t row_stride() const { return (blocks_across() | 1) * block_samples; }

    void blur_rows(const uint8_t *src, std::size_t block_row) const {
        uint16_t *first = blocks + block_row * row_stride();
        const std::size_t top = block_row * block_side;
        fetch_below(src + top * width + begin, columns());
        std::memset(first, 0, blocks_across() * block_samples * sizeof *first);
        for (std::size_t y = top; y < std::min(top + block_side, height); ++y)
            widen_row.active()(src + y * width + begin, columns(), first + (y - top) * block_side);
        transpose_blocks.active()(first, blocks_across());
        blur_lines.active()({first, columns(), block_samples}, radius, passes);
        transpose_blocks.active()(first, blocks_across());
    }

    void blur_columns(std::size_t block_column) const {
        const std::size_t first = written_begin - begin + block_column * block_side;
        blur_lines.active()({blocks + first * block_side, height, row_stride()}, radius, passes);
    }

    void write_rows(uint8_t *dst, std::size_t block_row) const {
        const std::size_t top = block_row * block_side;
        const std::size_t rows = std::min(block_side, height - top);
        const std::size_t columns = written_end - written_begin;
        uint8_t *to = dst + top * width + written_begin;
        fetch_below(to, columns);
        uint16_t *first = blocks + block_row * row_stride() + (written_begin - begin) * block_side;
        narrow_lines.active()({first, rows, block_samples}, columns, to, width);
    }

    // Asks for the rows of the next block. They lie too far apart for the processor to see a pattern.
    void fetch_below(const uint8_t *row, std::size_t count) const {
        for (std::size_t y = block_side; y < 2 * block_side; ++y) prefetch(row, y * width, y * width + count);
    }
};

// How far `passes` windows along a row reach, in whole blocks, or at least the row's length.
std::size_t reach_of(std::size_t radius, int32_t passes, std::size_t width) {
    const uint64_t reach = uint64_t{radius} * static_cast<uint64_t>(passes);
    return rounded_up(static_cast<std::size_t>(std::min<uint64_t>(reach, width)), block_side);
}

// Calls body(block) for the blocks that so many lines of this length are in, in parallel.
template <class Body> void over_blocks(std::size_t lines, std::size_t length, const Body &body) {
    const auto grain = row_grain(static_cast<int32_t>(length * block_side));
    parallel_for(0, static_cast<int32_t>(blocks_of(lines)), grain, [&](int32_t begin, int32_t end) {
        for (int32_t i = begin; i < end; ++i) body(static_cast<std::size_t>(i));
    });
}

} // namespace

TAVIK_EXPORT(void)
xBlur(int32_t width, int32_t height, int32_t radius, int32_t passes, const uint8_t *src, uint8_t *dst) {
    if (width <= 0 || height <= 0) return;
    if (passes <= 0) {
        std::memmove(dst, src, counts(width, height));
        return;
    }
    Strip strip = {.width = element_count(width),
                   .height = element_count(height),
                   .radius = std::min(element_count(radius), largest_radius),
                   .passes = passes};
    const std::size_t reach = reach_of(strip.radius, passes, strip.width);
    // Narrow strips stay in the caches, but blur what they share twice. A picture that is blurred in place is one strip:
    // the strips after the first would read what has been written.
    const bool is_apart = src != dst && same_or_apart(src, dst, counts(width, height));
    const bool in_strips = is_apart && reach < strip.width / 8;
    const std::size_t written = in_strips ? std::min(std::max(std::size_t{384}, 8 * reach), strip.width) : strip.width;

    strip.end = std::min(written + 2 * reach, strip.width);
    struct alignas(64) CacheLine {
        uint16_t samples[32];
    };
    const std::size_t samples = strip.row_stride() * blocks_of(strip.height);
    const std::unique_ptr<CacheLine[]> scratch(new (std::nothrow) CacheLine[samples / 32]);
    if (!scratch) return;
    strip.blocks = scratch[0].samples;

    for (std::size_t left = 0; left < strip.width; left += written) {
        strip.written_begin = left;
        strip.written_end = std::min(left + written, strip.width);
        strip.begin = left - std::min(left, reach);
        strip.end = std::min(strip.written_end + reach, strip.width);
        over_blocks(strip.height, strip.columns(), [&](std::size_t row) { strip.blur_rows(src, row); });
        over_blocks(strip.written_end - left, strip.height, [&](std::size_t column) { strip.blur_columns(column); });
        over_blocks(strip.height, strip.written_end - left, [&](std::size_t row) { strip.write_rows(dst, row); });
    }
}
