#include "tavik/filters/convolution.h"

#include "tavik/filters/filters.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

namespace {

// Three rows of one plane, above each other.
struct ThreeRows {
    const uint8_t *above;
    const uint8_t *middle;
    const uint8_t *below;
};

} // namespace

#define TAVIK_ROWS "tavik/filters/convolution_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const Kernel &kernel, ThreeRows src, uint8_t *dst, std::size_t columns)> convolve_between_ends =
    TAVIK_EVERY_LEVEL(convolve_between_ends);
constexpr PerLevel<void(const Kernel &kernel, ThreeRows src, uint8_t *dst, std::size_t columns)> convolve_ends =
    TAVIK_EVERY_LEVEL(convolve_ends);

} // namespace

TAVIK_EXPORT(void)
Convolve8(uint8_t *dst, const uint8_t *src, int32_t x_max, int32_t y_max, int32_t top_left, int32_t top,
          int32_t top_right, int32_t left, int32_t centre, int32_t right, int32_t bottom_left, int32_t bottom,
          int32_t bottom_right, int32_t divisor, int32_t bias) {
    if (x_max <= 0 || y_max <= 0) return;
    const Kernel kernel({top_left, top, top_right, left, centre, right, bottom_left, bottom, bottom_right}, divisor,
                        bias);
    // The filtered picture is x_max × y_max; the plane's last column and row lie outside it.
    const auto columns = static_cast<std::size_t>(x_max);
    const std::size_t stride = columns + 1;
    const auto rows_around = [&](int32_t y) {
        const auto row = [&](int32_t index) {
            return src + stride * static_cast<std::size_t>(std::clamp(index, 0, y_max - 1));
        };
        return ThreeRows{row(y - 1), row(y), row(y + 1)};
    };
    const auto dst_row = [&](int32_t y) { return dst + stride * static_cast<std::size_t>(y); };

    // The ends of a row are done while it is in the cache.
    parallel_for(1, y_max - 1, row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            convolve_between_ends.active()(kernel, rows_around(y), dst_row(y), columns);
            convolve_ends.active()(kernel, rows_around(y), dst_row(y), columns);
        }
    });
    for (const int32_t y : {0, y_max - 1}) convolve_between_ends.active()(kernel, rows_around(y), dst_row(y), columns);
}
