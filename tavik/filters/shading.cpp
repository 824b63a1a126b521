#include "tavik/filters/filters.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/filters/shading_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const float *normals, const float *light, float scale, uint8_t *dst, std::size_t count)>
    shade_normals = TAVIK_EVERY_LEVEL(shade_normals);

template <class WriteRow>
void shade_rows(int32_t x_max, int32_t rows, const float *normals, const float *light, float scale,
                const WriteRow &write_row) {
    const std::size_t columns = element_count(x_max);
    if (columns == 0) return;
    for (int32_t y = 0; y < rows; ++y) {
        const std::size_t start = (columns + 1) * static_cast<std::size_t>(y);
        write_row(start, columns, [&](uint8_t *dst) {
            shade_normals.active()(normals + 3 * start, light, scale, dst + start, columns);
        });
    }
}

} // namespace

TAVIK_EXPORT(void)
xGradientConvolve(int32_t x_max, int32_t rows, const float *normals, const float *light, float scale, uint8_t *dst1,
                  uint8_t *dst2, uint8_t *dst3) {
    shade_rows(x_max, rows, normals, light, scale, [&](std::size_t start, std::size_t columns, const auto &shade) {
        shade(dst1);
        std::copy_n(dst1 + start, columns, dst2 + start);
        std::copy_n(dst1 + start, columns, dst3 + start);
    });
}

TAVIK_EXPORT(void)
xGradientConvolve8(int32_t x_max, int32_t rows, const float *normals, const float *light, float scale, uint8_t *dst) {
    shade_rows(x_max, rows, normals, light, scale, [&](std::size_t, std::size_t, const auto &shade) { shade(dst); });
}
