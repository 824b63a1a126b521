#include "tavik/filters/filters.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/filters/median_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src, uint8_t *dst, std::size_t stride, std::size_t columns, std::size_t count)>
    median_rows = TAVIK_EVERY_LEVEL(median_rows);

} // namespace

TAVIK_EXPORT(void) xMedian(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max) {
    if (x_max < 2 || y_max < 2) return;
    const std::size_t stride = element_count(x_max) + 1;
    median_rows.active()(src + stride, dst + stride + 1, stride, stride - 2, element_count(y_max - 1));
}
