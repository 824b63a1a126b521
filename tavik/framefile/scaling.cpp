#include "tavik/framefile/scaling.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include "tavik/frame/arithmetic.h"
#include "tavik/framefile/framefile.h"

namespace tavik {

void scale_to_bitmap(const ScaledPlanes &planes, int32_t columns, int32_t rows, uint32_t *dst, std::ptrdiff_t stride) {
    if (columns <= 0 || rows <= 0) return;
    const std::unique_ptr<int32_t[]> source_columns(new (std::nothrow) int32_t[static_cast<std::size_t>(columns)]);
    if (!source_columns) return;
    const float step_x = static_cast<float>(planes.width) / static_cast<float>(planes.out_width);
    const float step_y = static_cast<float>(planes.height) / static_cast<float>(planes.out_height);
    float position = 0;
    for (int32_t x = 0; x < columns; ++x) {
        source_columns[static_cast<std::size_t>(x)] = truncate(position);
        position += step_x;
    }

    // Drift may carry the last columns of the last row past the planes' end.
    const int64_t last = int64_t{planes.width} * planes.height - 1;
    const bool rows_overlap = std::abs(stride) < columns;
    int32_t row_before = -1;
    for (int32_t y = 0; y < rows; ++y) {
        uint32_t *to = dst + y * stride;
        const int32_t row = std::min(truncate(static_cast<float>(y) * step_y), planes.height - 1);
        if (row == row_before && !rows_overlap) {
            std::copy_n(to - stride, columns, to);
            continue;
        }
        row_before = row;
        const int64_t start = int64_t{row} * planes.width;
        const auto pixel = [&](std::size_t i) {
            return uint32_t{planes.red[i]} << 16 | uint32_t{planes.green[i]} << 8 | planes.blue[i];
        };
        // Columns grow, so the last one tells for all.
        const bool ends_within = start + source_columns[static_cast<std::size_t>(columns) - 1] <= last;
        for (int32_t x = 0; x < columns; ++x) {
            const int64_t i = start + source_columns[static_cast<std::size_t>(x)];
            to[x] = pixel(static_cast<std::size_t>(ends_within ? i : std::min(i, last)));
        }
    }
}

} // namespace tavik

using namespace tavik;

TAVIK_EXPORT(void)
p_scale_to_dib(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint32_t *dst, int32_t src_width,
               int32_t src_height, int32_t out_width, int32_t out_height, int32_t dst_stride) {
    if (src_width <= 0 || src_height <= 0) return;
    scale_to_bitmap({src_r, src_g, src_b, src_width, src_height, out_width, out_height}, out_width, out_height, dst,
                    dst_stride);
}
