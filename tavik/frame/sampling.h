// Samples between samples: positions are those of sample centres, x to the right and y down.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/frame/vector_level.h"

namespace tavik {

// Between a and b, c and d below them.
[[gnu::always_inline]] constexpr float lerp4(float a, float b, float c, float d, float x, float y) {
    const float top = (b - a) * x + a;
    const float bottom = (d - c) * x + c;
    return (bottom - top) * y + top;
}

// Of a plane of bytes or floats, width and height at least 1. Beyond the plane its edge is repeated; NaN is beyond
// the far edges.
template <class Sample>
[[gnu::always_inline]] inline float bilinear(const Sample *plane, int32_t width, int32_t height, float x, float y) {
    const float held_x = clamp(x, 0.0F, static_cast<float>(width - 1));
    const float held_y = clamp(y, 0.0F, static_cast<float>(height - 1));
    const auto column = static_cast<int32_t>(held_x);
    const auto row = static_cast<int32_t>(held_y);
    const auto next = static_cast<std::size_t>(column < width - 1 ? 1 : 0);
    const Sample *top = plane + static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + column;
    const Sample *bottom = top + static_cast<std::size_t>(row < height - 1 ? width : 0);
    return lerp4(static_cast<float>(top[0]), static_cast<float>(top[next]), static_cast<float>(bottom[0]),
                 static_cast<float>(bottom[next]), held_x - static_cast<float>(column),
                 held_y - static_cast<float>(row));
}

// The same with columns that repeat: x is held to 0 .. width, and the first column follows the last.
template <class Sample>
[[gnu::always_inline]] inline float bilinear_wrapped(const Sample *plane, int32_t width, int32_t height, float x,
                                                     float y) {
    const float held_x = clamp(x, 0.0F, static_cast<float>(width));
    const float held_y = clamp(y, 0.0F, static_cast<float>(height - 1));
    const auto whole = static_cast<int32_t>(held_x);
    const auto row = static_cast<int32_t>(held_y);
    const int32_t column = whole < width ? whole : whole - width;
    const int32_t next = column + 1 < width ? column + 1 : 0;
    const Sample *top = plane + static_cast<std::size_t>(row) * static_cast<std::size_t>(width);
    const Sample *bottom = top + static_cast<std::size_t>(row < height - 1 ? width : 0);
    return lerp4(static_cast<float>(top[column]), static_cast<float>(top[next]), static_cast<float>(bottom[column]),
                 static_cast<float>(bottom[next]), held_x - static_cast<float>(whole),
                 held_y - static_cast<float>(row));
}

// dst[i] = bilinear(plane, width, height, x[i], y[i]).
using SampleBilinearRow = void(const uint8_t *plane, int32_t width, int32_t height, const float *x, const float *y,
                               float *dst, std::size_t count);
extern const PerLevel<SampleBilinearRow> sample_bilinear;
extern const PerLevel<SampleBilinearRow> sample_bilinear_wrapped;

// dst[i] = round_to_byte(src[i]).
using RoundBytesRow = void(const float *src, uint8_t *dst, std::size_t count);
extern const PerLevel<RoundBytesRow> round_bytes;

// The most positions that are sampled at a time: their coordinates stay in the nearest cache.
constexpr std::size_t sampling_run = 256;

// Rounds the samples of three planes at up to `sampling_run` positions.
void sample_three_planes(const uint8_t *const src[3], int32_t width, int32_t height, const float *x, const float *y,
                         uint8_t *const dst[3], std::size_t count,
                         const PerLevel<SampleBilinearRow> &sample = sample_bilinear);

// Where the pixels of a run are sampled.
struct SourcePositions {
    std::array<float, sampling_run> x, y;
};

// Pixels of one row that are handled together: `count` of them, up to `sampling_run`, from (x, y) on. The first one is
// element `at` of the planes.
struct PixelRun {
    int32_t x, y;
    std::size_t count, at;
};

// Calls body(run) for the pixels of the rows [begin, end), in tiles: what lies below each other is often sampled from
// the same cache lines, however the picture is turned.
template <class Body> void for_each_run_of_rows(int32_t width, int32_t begin, int32_t end, const Body &body) {
    const std::size_t columns = element_count(width);
    for (std::size_t x = 0; x < columns; x += sampling_run)
        for (int32_t y = begin; y < end; ++y)
            body(PixelRun{static_cast<int32_t>(x), y, std::min(sampling_run, columns - x),
                          static_cast<std::size_t>(y) * columns + x});
}

// The same for a whole picture in any order and at the same time.
template <class Body> void for_each_run(int32_t width, int32_t height, const Body &body) {
    constexpr int32_t tile_rows = 32;
    // Finding a position and gathering from it cost several times a light element.
    const int32_t grain = std::max(row_grain(width) / (8 * tile_rows), 1);
    parallel_for(0, height / tile_rows + (height % tile_rows > 0 ? 1 : 0), grain, [&](int32_t begin, int32_t end) {
        for (int32_t tile = begin; tile < end; ++tile)
            for_each_run_of_rows(width, tile * tile_rows,
                                 std::min(height - tile * tile_rows, tile_rows) + tile * tile_rows, body);
    });
}

} // namespace tavik
