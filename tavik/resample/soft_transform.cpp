#include <algorithm>

#include "tavik/frame/sampling.h"
#include "tavik/resample/interpolation.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

namespace {

using namespace tavik;

// From destination to source.
struct Affine {
    float xx, xy, x;
    float yx, yy, y;
};

struct SourcePicture {
    std::array<const uint8_t *, 3> planes;
    int32_t width, height;
    float x_end, y_end; // half a sample beyond the last

    SourcePicture(const std::array<const uint8_t *, 3> &samples, int32_t columns, int32_t rows)
        : planes(samples),
          width(columns),
          height(rows),
          x_end(static_cast<float>(columns) - 0.5F),
          y_end(static_cast<float>(rows) - 0.5F) {}

    bool contains(float x, float y) const { return x >= -0.5F && x < x_end && y >= -0.5F && y < y_end; }
};

// Of the pixels of a run: sums of the sub-samples that lie inside the source, and how many those are.
struct SubSamples {
    std::array<std::array<float, sampling_run>, 3> planes = {};
    std::array<int32_t, sampling_run> count = {};
};

// The cubic of a position inside the source, along x and then along y; edge samples are repeated.
float cubic_at(const SourcePicture &src, const uint8_t *plane, float x, float y) {
    const int32_t column = floor_to_int(x);
    const int32_t row = floor_to_int(y);
    const float part = x - static_cast<float>(column);
    std::array<float, 4> down;
    for (int32_t k = 0; k < 4; ++k) {
        const uint8_t *samples =
            plane + row_start(element_count(src.width), std::clamp(row - 1 + k, 0, src.height - 1));
        const auto at = [&](int32_t i) {
            return static_cast<float>(samples[std::clamp(column + i, 0, src.width - 1)]);
        };
        down[static_cast<std::size_t>(k)] = catmull_rom(at(-1), at(0), at(1), at(2), part);
    }
    return catmull_rom(down[0], down[1], down[2], down[3], y - static_cast<float>(row));
}

} // namespace

#define TAVIK_ROWS "tavik/resample/soft_transform_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const Affine &matrix, float offset_x, float offset_y, const PixelRun &run,
                        SourcePositions &from)>
    transform_positions = TAVIK_EVERY_LEVEL(transform_positions);
constexpr PerLevel<void(const SourcePicture &src, const SourcePositions &from, std::size_t count, SubSamples &sums)>
    add_cubic_samples = TAVIK_EVERY_LEVEL(add_cubic_samples);
constexpr PerLevel<void(const float *sum, const int32_t *counted, float background, int32_t all, uint8_t *dst,
                        std::size_t count)>
    mean_of_samples = TAVIK_EVERY_LEVEL(mean_of_samples);
constexpr PerLevel<void(const int32_t *counted, int32_t all, uint8_t *dst, std::size_t count)> share_of_samples =
    TAVIK_EVERY_LEVEL(share_of_samples);

} // namespace

TAVIK_EXPORT(void)
GoodTransform2(const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g,
               uint8_t *dst_b, uint8_t *dst_a, int32_t src_width, int32_t src_height, int32_t dst_width,
               int32_t dst_height, const float *matrix, int32_t background, int32_t samples) {
    if (dst_width <= 0 || dst_height <= 0) return;
    const int32_t n = std::clamp(samples, 1, 4);
    const auto offset = [&](int32_t k) {
        return (static_cast<float>(k) + 0.5F) * (1.0F / static_cast<float>(n)) - 0.5F;
    };
    const Affine affine = {matrix[0], matrix[4], matrix[12], matrix[1], matrix[5], matrix[13]};
    const SourcePicture src({src_r, src_g, src_b}, src_width, src_height);
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    for_each_run(dst_width, dst_height, [&](const PixelRun &run) {
        SubSamples sums;
        SourcePositions from;
        for (int32_t j = 0; j < n; ++j) {
            for (int32_t i = 0; i < n; ++i) {
                transform_positions.active()(affine, offset(i), offset(j), run, from);
                add_cubic_samples.active()(src, from, run.count, sums);
            }
        }
        for (std::size_t plane = 0; plane < 3; ++plane)
            mean_of_samples.active()(sums.planes[plane].data(), sums.count.data(),
                                     static_cast<float>(background >> (8 * plane) & 0xFF), n * n, dst[plane] + run.at,
                                     run.count);
        share_of_samples.active()(sums.count.data(), n * n, dst_a + run.at, run.count);
    });
}
