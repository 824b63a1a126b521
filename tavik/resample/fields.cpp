// Warps whose source positions the host gives, as vectors or as a map of points.
#include "tavik/frame/sampling.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

#define TAVIK_ROWS "tavik/resample/fields_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

using namespace tavik;

constexpr PerLevel<void(const float *field, float amount, const PixelRun &run, SourcePositions &from)> displace =
    TAVIK_EVERY_LEVEL(displace);
constexpr PerLevel<void(const float *from, const float *to, float t, uint8_t *dst, std::size_t count)> cross_dissolve =
    TAVIK_EVERY_LEVEL(cross_dissolve);
constexpr PerLevel<void(const float *map, int32_t width, int32_t height, int32_t *from, std::size_t count)>
    nearest_samples = TAVIK_EVERY_LEVEL(nearest_samples);

// The vector of a run's first pixel.
const float *vectors_of(const float *field, int32_t stride, const PixelRun &run) {
    return field + 2 * (row_start(element_count(stride), run.y) + element_count(run.x));
}

// The points of a map with one column and one row more, as its last two columns and rows would go on.
class ContinuedMap {
  public:
    using Points = std::array<float, 2 * (sampling_run + 1)>;

    ContinuedMap(int32_t width, int32_t height, const float *points)
        : columns(element_count(width)), rows(element_count(height)), map(points) {}

    // The points of a run's columns and one more.
    void read(const PixelRun &run, std::size_t y, Points &points) const {
        read_row(run, std::min(y, rows - 1), points);
        if (y < rows || rows == 1) return;
        Points above;
        read_row(run, rows - 2, above);
        for (std::size_t i = 0; i < 2 * (run.count + 1); ++i) points[i] = (points[i] + points[i]) - above[i];
    }

  private:
    void read_row(const PixelRun &run, std::size_t y, Points &points) const {
        const std::size_t first = element_count(run.x);
        const std::size_t in_map = std::min(run.count + 1, columns - first);
        std::copy_n(map + 2 * (y * columns + first), 2 * in_map, points.begin());
        if (in_map > run.count) return;
        const float *end = map + 2 * (y + 1) * columns;
        for (std::size_t k = 0; k < 2; ++k) {
            const float last = end[static_cast<std::ptrdiff_t>(k) - 2];
            points[2 * in_map + k] = columns == 1 ? last : (last + last) - end[static_cast<std::ptrdiff_t>(k) - 4];
        }
    }

    std::size_t columns;
    std::size_t rows;
    const float *map;
};

// Both rows of points with one more on the right. Wider vectors would only shuffle more: the stores take the time.
void double_rows(const float *node, const float *below, float *even, float *odd, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t k = 0; k < 2; ++k) {
            const std::size_t at = 2 * i + k;
            even[4 * i + k] = node[at] + node[at];
            even[4 * i + 2 + k] = node[at] + node[at + 2];
            odd[4 * i + k] = node[at] + below[at];
            odd[4 * i + 2 + k] = ((node[at] + node[at + 2]) + (below[at] + below[at + 2])) * 0.5F;
        }
    }
}

} // namespace

TAVIK_EXPORT(void)
xLinearWarp(int32_t width, int32_t height, float amount, int32_t field_stride, const float *field, const uint8_t *src_r,
            const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const std::array<const uint8_t *, 3> src = {src_r, src_g, src_b};
    for_each_run(width, height, [&](const PixelRun &run) {
        const std::array<uint8_t *, 3> dst = {dst_r + run.at, dst_g + run.at, dst_b + run.at};
        SourcePositions from;
        displace.active()(vectors_of(field, field_stride, run), amount, run, from);
        sample_three_planes(src.data(), width, height, from.x.data(), from.y.data(), dst.data(), run.count);
    });
}

TAVIK_EXPORT(void)
xBilinearMorpheHelper(int32_t width, int32_t height, float t, int32_t field_stride, const float *field,
                      const uint8_t *from_r, const uint8_t *from_g, const uint8_t *from_b, const uint8_t *to_r,
                      const uint8_t *to_g, const uint8_t *to_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const std::array<const uint8_t *, 3> from = {from_r, from_g, from_b};
    const std::array<const uint8_t *, 3> to = {to_r, to_g, to_b};
    const std::array<uint8_t *, 3> dst = {dst_r, dst_g, dst_b};
    for_each_run(width, height, [&](const PixelRun &run) {
        const float *vectors = vectors_of(field, field_stride, run);
        SourcePositions in_from;
        SourcePositions in_to;
        displace.active()(vectors, -t, run, in_from);
        displace.active()(vectors, 1.0F - t, run, in_to);
        std::array<float, sampling_run> before;
        std::array<float, sampling_run> after;
        for (std::size_t plane = 0; plane < 3; ++plane) {
            sample_bilinear.active()(from[plane], width, height, in_from.x.data(), in_from.y.data(), before.data(),
                                     run.count);
            sample_bilinear.active()(to[plane], width, height, in_to.x.data(), in_to.y.data(), after.data(), run.count);
            cross_dissolve.active()(before.data(), after.data(), t, dst[plane] + run.at, run.count);
        }
    });
}

TAVIK_EXPORT(void) Mapxtwo(int32_t width, int32_t height, const float *map, float *dst) {
    const ContinuedMap continued(width, height, map);
    for_each_run(width, height, [&](const PixelRun &run) {
        const std::size_t y = element_count(run.y);
        const std::size_t row_length = 4 * element_count(width);
        float *even = dst + 2 * y * row_length + 4 * element_count(run.x);
        ContinuedMap::Points node;
        ContinuedMap::Points below;
        continued.read(run, y, node);
        continued.read(run, y + 1, below);
        double_rows(node.data(), below.data(), even, even + row_length, run.count);
    });
}

TAVIK_EXPORT(void)
MapCopy(int32_t width, int32_t height, const float *map, int32_t src_width, int32_t src_height, const uint8_t *src_r,
        const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    for_each_run(width, height, [&](const PixelRun &run) {
        std::array<int32_t, sampling_run> from;
        nearest_samples.active()(map + 2 * run.at, src_width, src_height, from.data(), run.count);
        copy_indexed(src_r, from.data(), dst_r + run.at, run.count);
        copy_indexed(src_g, from.data(), dst_g + run.at, run.count);
        copy_indexed(src_b, from.data(), dst_b + run.at, run.count);
    });
}
