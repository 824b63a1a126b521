#include <algorithm>
#include <array>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/size_form.h"
#include "tavik/framefile/framefile.h"

namespace {

// Columns that are handled at a time.
constexpr std::size_t run_columns = 256;

struct SourceColumns {
    std::array<int32_t, run_columns> left;
    std::array<int32_t, run_columns> right;
    std::array<float, run_columns> part;
};

// Where a sample of the output lies between two of the source.
struct Between {
    int32_t first;
    int32_t second;
    float part; // of the way to the second
};

constexpr Between between(int32_t index, float step, int32_t last) {
    const float position = static_cast<float>(index) * step;
    const int32_t first = tavik::truncate(position);
    return {first, std::min(tavik::wrap_add(first, 1), last), position - static_cast<float>(first)};
}

} // namespace

#define TAVIK_ROWS "tavik/framefile/thumbnail_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(int32_t first, float step, int32_t last, SourceColumns &columns, std::size_t count)>
    find_columns = TAVIK_EVERY_LEVEL(find_columns);
constexpr PerLevel<void(const uint8_t *above, const uint8_t *below, const SourceColumns &columns, float part_y,
                        uint8_t *dst, std::size_t count)>
    resample_run = TAVIK_EVERY_LEVEL(resample_run);
constexpr PerLevel<void(const uint8_t *above, const uint8_t *below, uint8_t *dst, std::size_t count)> halve_run =
    TAVIK_EVERY_LEVEL(halve_run);
constexpr PerLevel<void(const uint8_t *blue, const uint8_t *green, const uint8_t *red, uint8_t *dst, std::size_t count)>
    pack_pixels = TAVIK_EVERY_LEVEL(pack_pixels);

// Calls run(first, count) for runs of columns.
template <class Run> void in_runs(std::size_t columns, const Run &run) {
    for (std::size_t first = 0; first < columns; first += run_columns)
        run(first, std::min(run_columns, columns - first));
}

void resample(const uint8_t *const src[3], int32_t x_max, int32_t y_max, uint8_t *const dst[3], std::size_t width,
              std::size_t height) {
    const float step_x = static_cast<float>(x_max) / static_cast<float>(width);
    const float step_y = static_cast<float>(y_max) / static_cast<float>(height);
    const auto row_start = [&](int32_t row) {
        return truncate(static_cast<float>(wrap_add(x_max, 1)) * static_cast<float>(row));
    };
    for (std::size_t y = 0; y < height; ++y) {
        const Between row = between(static_cast<int32_t>(y), step_y, y_max);
        in_runs(width, [&](std::size_t first, std::size_t count) {
            SourceColumns columns;
            find_columns.active()(static_cast<int32_t>(first), step_x, x_max, columns, count);
            for (int plane = 0; plane < 3; ++plane)
                resample_run.active()(src[plane] + row_start(row.first), src[plane] + row_start(row.second), columns,
                                      row.part, dst[plane] + y * (width + 1) + first, count);
        });
    }
}

} // namespace

TAVIK_EXPORT(int32_t)
SuperThumb(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *tmp_r, uint8_t *tmp_g,
           uint8_t *tmp_b, uint8_t *dst, int32_t src_x_max, int32_t src_y_max, int32_t thumb_width,
           int32_t thumb_height) {
    if (thumb_height < 1) return 0;
    const std::size_t width = element_count(thumb_width);
    const std::size_t height = element_count(thumb_height);
    if (width == 0) return thumb_height;
    const uint8_t *const src[3] = {src_b, src_g, src_r};
    uint8_t *const tmp[3] = {tmp_b, tmp_g, tmp_r};
    resample(src, src_x_max, src_y_max, tmp, 2 * width, 2 * height);
    for (std::size_t y = 0; y < height; ++y) {
        in_runs(width, [&](std::size_t first, std::size_t count) {
            std::array<std::array<uint8_t, run_columns>, 3> means;
            const std::size_t stride = 2 * width + 1;
            for (std::size_t plane = 0; plane < 3; ++plane) {
                const uint8_t *above = tmp[plane] + 2 * y * stride + 2 * first;
                halve_run.active()(above, above + stride, means[plane].data(), count);
            }
            pack_pixels.active()(means[0].data(), means[1].data(), means[2].data(), dst + 3 * ((width + 1) * y + first),
                                 count);
        });
    }
    return thumb_height;
}
