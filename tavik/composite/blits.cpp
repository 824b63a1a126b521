#include "tavik/composite/composite.h"

#include <array>

#include "tavik/frame/overlap.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/composite/blits_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src, const uint8_t *alpha, uint8_t *dst, std::size_t count)> alpha_blit =
    TAVIK_EVERY_LEVEL(alpha_blit);
constexpr PerLevel<void(uint8_t *a, uint8_t *b, std::size_t count)> swap_samples = TAVIK_EVERY_LEVEL(swap_samples);

// The positions of a destination's rows or columns in its source.
struct AxisFit {
    int32_t offset;
    float scale;
    int32_t source_size;

    // Outside the source, whose last position counts as outside, it is negative.
    int32_t operator()(int32_t position) const {
        const int32_t source = truncate(static_cast<float>(wrap_sub(position, offset)) / scale);
        return source < wrap_sub(source_size, 1) ? source : -1;
    }
};

// Where a piece of each row takes its samples from. Positions rise or fall along a row, so that those inside the
// source are one run.
class ColumnFit {
  public:
    static constexpr int32_t longest = 4096;

    ColumnFit(const AxisFit &fit, int32_t first, int32_t count) : count_(count) {
        for (int32_t x = 0; x < count; ++x) columns_[static_cast<std::size_t>(x)] = fit(first + x);
        while (begin_ < count && column(begin_) < 0) ++begin_;
        end_ = begin_;
        while (end_ < count && column(end_) >= 0) ++end_;
    }

    void place(const uint8_t *src, uint8_t *dst, uint8_t fill) const {
        // The stores below may alias members as far as the compiler knows.
        const int32_t *const columns = columns_.data();
        const std::ptrdiff_t end = end_;
        std::memset(dst, fill, static_cast<std::size_t>(begin_));
        for (std::ptrdiff_t x = begin_; x < end; ++x) dst[x] = src[columns[x]];
        std::memset(dst + end, fill, static_cast<std::size_t>(count_ - end));
    }

    std::size_t count() const { return static_cast<std::size_t>(count_); }

  private:
    int32_t column(int32_t x) const { return columns_[static_cast<std::size_t>(x)]; }

    std::array<int32_t, longest> columns_;
    int32_t count_;
    int32_t begin_ = 0;
    int32_t end_ = 0;
};

} // namespace

TAVIK_EXPORT(void)
AlphaBlit(int32_t width, int32_t height, const uint8_t *src, uint8_t *dst, const uint8_t *alpha) {
    const std::size_t count = counts(width, height);
    row_in_order(alpha_blit, {src, alpha, dst}, count)(src, alpha, dst, count);
}

TAVIK_EXPORT(void)
xSwapBlit(int32_t plane_width, int32_t plane_height, int32_t x0, int32_t y0, int32_t block_width, int32_t block_height,
          uint8_t *plane, uint8_t *block) {
    const int64_t left = std::max(x0, 0);
    const int64_t top = std::max(y0, 0);
    const int64_t columns = std::min<int64_t>(block_width, plane_width - left);
    const int64_t rows = std::min<int64_t>(block_height, plane_height - top);
    if (columns <= 0) return;
    for (int64_t row = 0; row < rows; ++row)
        swap_samples.active()(plane + (top + row) * plane_width + left, block + row * block_width,
                              static_cast<std::size_t>(columns));
}

TAVIK_EXPORT(void)
FixedAspectBlit(int32_t src_width, int32_t src_height, int32_t dst_width, int32_t dst_height, int32_t x_offset,
                int32_t y_offset, float scale, int32_t fill1, int32_t fill2, int32_t fill3, uint8_t *dst1,
                uint8_t *dst2, uint8_t *dst3, const uint8_t *src1, const uint8_t *src2, const uint8_t *src3) {
    if (dst_width <= 0 || dst_height <= 1) return;
    const std::array fills = {low_byte(fill1), low_byte(fill2), low_byte(fill3)};
    const std::array dst = {dst1, dst2, dst3};
    const std::array src = {src1, src2, src3};
    const AxisFit rows{y_offset, scale, src_height};
    const AxisFit columns{x_offset, scale, src_width};
    const auto draw_piece = [&](const ColumnFit &piece, int32_t left, int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            const int32_t row = rows(y);
            const bool repeats = y > begin && row == rows(y - 1);
            for (std::size_t channel = 0; channel < 3; ++channel) {
                uint8_t *to = dst[channel] + std::ptrdiff_t{y} * dst_width + left;
                if (row < 0) {
                    std::memset(to, fills[channel], piece.count());
                } else if (repeats) {
                    std::memcpy(to, to - dst_width, piece.count());
                } else {
                    piece.place(src[channel] + std::ptrdiff_t{row} * src_width, to, fills[channel]);
                }
            }
        }
    };
    // A fit serves a few rows: fewer would compute it too often, more would leave the cache.
    constexpr int32_t band = 128;
    parallel_for(0, dst_height - 1, row_grain(dst_width), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; y += band)
            for (int32_t left = 0; left < dst_width; left += ColumnFit::longest)
                draw_piece({columns, left, std::min(dst_width - left, ColumnFit::longest)}, left, y,
                           std::min(end - y, band) + y);
    });
}
