#include "tavik/filters/filters.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/filters/median_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *above, const uint8_t *middle, const uint8_t *below, uint8_t *dst,
                        std::size_t count)>
    median_row = TAVIK_EVERY_LEVEL(median_row);

} // namespace

TAVIK_EXPORT(void) xMedian(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max) {
    if (x_max < 2) return;
    const auto columns = static_cast<std::size_t>(x_max) - 1;
    const std::size_t stride = columns + 2;
    for (int32_t y = 1; y < y_max; ++y) {
        const std::size_t start = stride * static_cast<std::size_t>(y);
        const uint8_t *middle = src + start;
        median_row.active()(middle - stride, middle, middle + stride, dst + start + 1, columns);
    }
}
