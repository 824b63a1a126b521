#include <array>
#include <cmath>

#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

namespace {

// A colour and its alpha.
using Entry = std::array<float, 4>;

// Red, green, blue and alpha, each last + 1 floats.
struct FloatTable {
    std::array<const float *, 4> components;
    float last;
    // The same entry by entry, or null.
    const Entry *entries = nullptr;

    FloatTable(const float *table, int32_t n) : last(static_cast<float>(n)) {
        const std::size_t stride = static_cast<std::size_t>(n) + 1;
        for (std::size_t c = 0; c < 4; ++c) components[c] = table + c * stride;
    }

    // Puts the components of each entry beside each other: one load takes them all.
    void pack(Entry *to) {
        for (std::size_t i = 0; i <= static_cast<std::size_t>(last); ++i)
            for (std::size_t c = 0; c < 4; ++c) to[i][c] = components[c][i];
        entries = to;
    }
};

// Pixels that are worked on at once.
constexpr std::size_t run = 512;

constexpr float pi = 3.1415927F;

} // namespace

#define TAVIK_ROWS "tavik/generators/float_gradients_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(int32_t x, float step_x, float row_offset, float offset, float *positions, std::size_t count)>
    linear_positions = TAVIK_EVERY_LEVEL(linear_positions);
constexpr PerLevel<void(int32_t x, float cx, float dy, float *positions, std::size_t count)> circular_positions =
    TAVIK_EVERY_LEVEL(circular_positions);
constexpr PerLevel<void(float *angles, float repeats, float length, std::size_t count)> sweep_positions =
    TAVIK_EVERY_LEVEL(sweep_positions);
constexpr PerLevel<void(const float *positions, const FloatTable &table, const uint8_t *const src[3],
                        uint8_t *const dst[3], std::size_t count)>
    render_row = TAVIK_EVERY_LEVEL(render_row);

struct Channels {
    std::array<uint8_t *, 3> dst;
    std::array<const uint8_t *, 3> src;
};

// Renders what write_positions(x, y, positions, count) says of each run of pixels.
template <class WritePositions>
void render(int32_t width, int32_t rows, FloatTable table, const Channels &planes,
            const WritePositions &write_positions) {
    const std::size_t columns = element_count(width);
    std::array<Entry, 1024> entries;
    const std::size_t pixels = columns * element_count(rows);
    if (table.last < static_cast<float>(std::min(entries.size(), pixels))) table.pack(entries.data());
    // A pixel costs several light elements.
    const int32_t grain = std::max(row_grain(width) / 8, 1);
    parallel_for(0, rows, grain, [&](int32_t begin, int32_t end) {
        std::array<float, run> positions;
        for (int32_t y = begin; y < end; ++y) {
            for (std::size_t x = 0; x < columns; x += run) {
                const std::size_t count = std::min(run, columns - x);
                write_positions(static_cast<int32_t>(x), y, positions.data(), count);
                const std::size_t start = static_cast<std::size_t>(y) * columns + x;
                const uint8_t *const src[3] = {planes.src[0] + start, planes.src[1] + start, planes.src[2] + start};
                uint8_t *const dst[3] = {planes.dst[0] + start, planes.dst[1] + start, planes.dst[2] + start};
                render_row.active()(positions.data(), table, src, dst, count);
            }
        }
    });
}

} // namespace

TAVIK_EXPORT(void)
xRenderLinearTo(float step_x, float step_y, float offset, int32_t width, int32_t rows, int32_t n, const float *table,
                uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r, const uint8_t *src_g,
                const uint8_t *src_b) {
    render(width, rows, {table, n}, {{dst_r, dst_g, dst_b}, {src_r, src_g, src_b}},
           [=](int32_t x, int32_t y, float *positions, std::size_t count) {
               linear_positions.active()(x, step_x, step_y * static_cast<float>(y), offset, positions, count);
           });
}

TAVIK_EXPORT(void)
xRenderCircularTo(float cx, float cy, int32_t /*ignored1*/, int32_t /*ignored2*/, int32_t width, int32_t rows,
                  int32_t n, const float *table, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r,
                  const uint8_t *src_g, const uint8_t *src_b) {
    render(width, rows, {table, n}, {{dst_r, dst_g, dst_b}, {src_r, src_g, src_b}},
           [=](int32_t x, int32_t y, float *positions, std::size_t count) {
               circular_positions.active()(x, cx, static_cast<float>(y) - cy, positions, count);
           });
}

TAVIK_EXPORT(void)
xRenderSweepTo(float cx, float cy, float px, float py, float repeats, int32_t width, int32_t rows, int32_t n,
               const float *table, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, const uint8_t *src_r,
               const uint8_t *src_g, const uint8_t *src_b) {
    const float length = std::sqrt((cx - px) * (cx - px) + (cy - py) * (cy - py));
    render(width, rows, {table, n}, {{dst_r, dst_g, dst_b}, {src_r, src_g, src_b}},
           [=](int32_t x, int32_t y, float *positions, std::size_t count) {
               const double dy = static_cast<float>(y) - cy;
               for (std::size_t i = 0; i < count; ++i) {
                   const double dx = static_cast<float>(x + static_cast<int32_t>(i)) - cx;
                   // In double precision the runtimes of all targets agree on the single-precision result.
                   positions[i] = static_cast<float>(std::atan2(dx, dy));
               }
               sweep_positions.active()(positions, repeats, length, count);
           });
}
