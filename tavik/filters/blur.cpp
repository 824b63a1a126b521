#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "tavik/filters/filters.h"
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

constexpr std::size_t columns_together = 64;

constexpr std::size_t blocks_of(std::size_t samples) { return (samples + block_side - 1) / block_side; }

// Both phases keep the picture in blocks: the first blurs along their rows, each block transposed meanwhile, the
// second along their columns.
struct Blur {
    std::size_t width, height, radius;
    int32_t passes;
    uint16_t *blocks;

    std::size_t blocks_across() const { return blocks_of(width); }
    // From one row of blocks to the next. An odd number of blocks, so that the blocks of a column lie in different sets
    // of the caches.
    std::size_t row_stride() const { return (blocks_across() | 1) * block_samples; }

    void blur_rows(const uint8_t *src, std::size_t block_row) const {
        uint16_t *first = blocks + block_row * row_stride();
        const std::size_t top = block_row * block_side;
        std::memset(first, 0, blocks_across() * block_samples * sizeof *first);
        for (std::size_t y = top; y < std::min(top + block_side, height); ++y)
            widen_row.active()(src + y * width, width, first + (y - top) * block_side);
        transpose_blocks.active()(first, blocks_across());
        blur_lines.active()({first, width, block_samples}, radius, passes);
        transpose_blocks.active()(first, blocks_across());
    }

    // As many columns as fill a cache line of the destination.
    void blur_columns(uint8_t *dst, std::size_t group) const {
        const std::size_t left = group * columns_together;
        const std::size_t columns = std::min(columns_together, width - left);
        Lines lines = {blocks + left * block_side, height, row_stride()};
        for (std::size_t block = 0; block < blocks_of(columns); ++block, lines.first += block_samples)
            blur_lines.active()(lines, radius, passes);
        lines.first = blocks + left * block_side;
        narrow_lines.active()(lines, columns, dst + left, width);
    }
};

} // namespace

TAVIK_EXPORT(void)
xBlur(int32_t width, int32_t height, int32_t radius, int32_t passes, const uint8_t *src, uint8_t *dst) {
    if (width <= 0 || height <= 0) return;
    if (passes <= 0) {
        std::memmove(dst, src, counts(width, height));
        return;
    }
    Blur blur = {element_count(width), element_count(height), std::min(element_count(radius), largest_radius), passes,
                 nullptr};
    struct alignas(64) CacheLine {
        uint16_t samples[32];
    };
    const std::size_t samples = blur.row_stride() * blocks_of(blur.height);
    const std::unique_ptr<CacheLine[]> scratch(new (std::nothrow) CacheLine[samples / 32]);
    if (!scratch) return;
    blur.blocks = scratch[0].samples;

    const auto over_groups = [](std::size_t lines, std::size_t together, std::size_t length, const auto &body) {
        const auto groups = static_cast<int32_t>((lines + together - 1) / together);
        const auto grain = row_grain(static_cast<int32_t>(length * together));
        parallel_for(0, groups, grain, [&](int32_t begin, int32_t end) {
            for (int32_t i = begin; i < end; ++i) body(static_cast<std::size_t>(i));
        });
    };
    over_groups(blur.height, block_side, blur.width, [&](std::size_t block_row) { blur.blur_rows(src, block_row); });
    over_groups(blur.width, columns_together, blur.height, [&](std::size_t group) { blur.blur_columns(dst, group); });
}
