#include "tavik/filters/filters.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/size_form.h"

namespace {

// The rows that are filtered at once: bytes of a cache line of the destination.
constexpr std::size_t strip_rows = 64;

// So many rows of a source, or fewer, and the columns of a destination that they become.
struct Strip {
    const uint8_t *src;
    uint8_t *dst;
    std::size_t dst_stride;
    std::size_t columns; // of src, whose rows are packed
    std::size_t rows;
};

} // namespace

#define TAVIK_ROWS "tavik/filters/rank_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

using StripFilter = void(const Strip &strip, std::size_t radius);

constexpr PerLevel<StripFilter> running_maximum = TAVIK_EVERY_LEVEL(running_maximum);
constexpr PerLevel<StripFilter> running_minimum = TAVIK_EVERY_LEVEL(running_minimum);

void filter_transposed(const PerLevel<StripFilter> &filter, uint8_t of_empty_span, const uint8_t *src, uint8_t *dst,
                       int32_t x_max, int32_t y_max, int32_t radius) {
    if (x_max < 0 || y_max < 0) return;
    const auto columns = static_cast<std::size_t>(x_max) + 1;
    const auto rows = static_cast<std::size_t>(y_max) + 1;
    if (radius <= 0) {
        std::fill_n(dst, columns * rows, of_empty_span);
        return;
    }
    // A span that reaches past both ends of a row changes no more.
    const std::size_t reach = std::min(static_cast<std::size_t>(radius), columns);
    const std::size_t rows_at_once = std::min(rows, strip_rows);
    for (std::size_t begin = 0; begin < rows; begin += rows_at_once) {
        // The last strip may do rows of the one before again.
        const std::size_t y = std::min(begin, rows - rows_at_once);
        filter.active()({src + y * columns, dst + y, rows, columns, rows_at_once}, reach);
    }
}

} // namespace

TAVIK_EXPORT(void) Maximum_s(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max, int32_t radius) {
    filter_transposed(running_maximum, 0, src, dst, x_max, y_max, radius);
}

TAVIK_EXPORT(void) Minimum_s(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max, int32_t radius) {
    filter_transposed(running_minimum, 255, src, dst, x_max, y_max, radius);
}
