#include "tavik/frame/parallel_for.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

#define TAVIK_ROWS "tavik/resample/mirrors_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *last, uint8_t *dst, std::size_t count)> copy_backwards =
    TAVIK_EVERY_LEVEL(copy_backwards);

} // namespace

TAVIK_EXPORT(void) FastHMirror(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max) {
    if (x_max < 2) return;
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    const auto half = static_cast<std::size_t>(x_max / 2);
    parallel_for(0, wrap_add(y_max, 1), row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t r = begin; r < end; ++r) {
            const std::size_t row = row_start(stride, r);
            copy_backwards.active()(src + row + x_max, dst + row, half);
        }
    });
}

TAVIK_EXPORT(void) FastVMirror(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t y_max) {
    if (x_max < 1 || y_max < 0) return;
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    const int32_t half = y_max / 2;
    const int32_t middle = half + y_max % 2;
    parallel_for(0, middle + 1, row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t k = begin; k < end; ++k)
            std::memcpy(dst + row_start(stride, half + k), src + row_start(stride, middle - k),
                        static_cast<std::size_t>(x_max));
    });
}
