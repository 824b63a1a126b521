#include <array>

#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/generators/generators.h"

#define TAVIK_ROWS "tavik/generators/textures_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *src, const uint8_t *factors, uint8_t *dst, std::size_t count)> scaled_by_bytes =
    TAVIK_EVERY_LEVEL(scaled_by_bytes);

using Colour = std::array<uint8_t, 3>;

Colour colour_of(int32_t r, int32_t g, int32_t b) { return {low_byte(r), low_byte(g), low_byte(b)}; }

// Stripes across a row: of every `period` pixels, counted from `shift` before the row, the first `length` have the
// first colour. The period is positive and longer than the shift; the length may be anything.
struct Stripes {
    int64_t period;
    int64_t length;
    int64_t shift;
};

void fill_row(uint8_t *row, std::size_t width, const Stripes &stripes, uint8_t first, uint8_t second) {
    const auto columns = static_cast<int64_t>(width);
    const int64_t drawn = std::min(stripes.period, columns);
    const auto in_period = [drawn](int64_t x) { return std::clamp<int64_t>(x, 0, drawn); };
    // The first period begins inside a stripe: the rest of the first colour, the second, the first again.
    const int64_t length = std::clamp<int64_t>(stripes.length, 0, stripes.period);
    std::fill(row, row + drawn, second);
    std::fill(row, row + in_period(length - stripes.shift), first);
    std::fill(row + in_period(stripes.period - stripes.shift), row + in_period(stripes.period - stripes.shift + length),
              first);
    for (int64_t done = drawn; done < columns; done *= 2) std::copy_n(row, std::min(done, columns - done), row + done);
}

// The parts of an integer division by a divisor of either sign.
int64_t magnitude(int32_t divisor) { return std::abs(int64_t{divisor}); }

// Fills each row with the stripes of stripes_of(y).
template <class StripesOfRow>
void fill_striped(int32_t width, int32_t height, std::array<uint8_t *, 3> planes, const Colour &first,
                  const Colour &second, const StripesOfRow &stripes_of) {
    const std::size_t columns = element_count(width);
    if (columns == 0) return;
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            const Stripes stripes = stripes_of(y);
            for (std::size_t c = 0; c < 3; ++c)
                fill_row(planes[c] + static_cast<std::size_t>(y) * columns, columns, stripes, first[c], second[c]);
        }
    });
}

} // namespace

TAVIK_EXPORT(void)
xbrick(float brick_width, float mortar, int32_t brick_r, int32_t brick_g, int32_t brick_b, int32_t mortar_r,
       int32_t mortar_g, int32_t mortar_b, int32_t width, int32_t height, uint8_t *dst_r, uint8_t *dst_g,
       uint8_t *dst_b) {
    const int32_t bw = truncate(brick_width);
    const int32_t joint = truncate(mortar);
    const int32_t bh = std::max(bw / 2, 1);
    const int32_t course_height = wrap_add(bh, joint);
    const int64_t period = std::max<int64_t>(magnitude(wrap_add(bw, joint)), 1);
    fill_striped(width, height, {dst_r, dst_g, dst_b}, colour_of(brick_r, brick_g, brick_b),
                 colour_of(mortar_r, mortar_g, mortar_b), [=](int32_t y) {
                     const bool shifted = (y / course_height) % 2 != 0;
                     const bool joint_row = y % course_height > bh;
                     return Stripes{period, joint_row ? 0 : int64_t{bw} + 1, shifted ? bh % period : 0};
                 });
}

TAVIK_EXPORT(void)
xcheckerboard(int32_t cell_width, int32_t cell_height, int32_t a_r, int32_t a_g, int32_t a_b, int32_t b_r, int32_t b_g,
              int32_t b_b, int32_t width, int32_t height, uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b) {
    const int64_t cell = magnitude(cell_width);
    fill_striped(width, height, {dst_r, dst_g, dst_b}, colour_of(b_r, b_g, b_b), colour_of(a_r, a_g, a_b),
                 [=](int32_t y) {
                     return Stripes{2 * cell, cell, (y / cell_height) % 2 != 0 ? cell : 0};
                 });
}

TAVIK_EXPORT(void)
xDoWeave(int32_t tile_scale, int32_t width, int32_t height, int32_t tile_width, int32_t tile_height,
         const uint8_t *tile, const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, uint8_t *dst_r,
         uint8_t *dst_g, uint8_t *dst_b) {
    if (width <= 1) return;
    constexpr std::size_t run = 1024;
    const auto step = static_cast<float>(100.0 / tile_scale);
    const std::size_t stride = element_count(width);
    const std::size_t columns = stride - 1;
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        std::array<int32_t, run> tile_columns;
        std::array<uint8_t, run> factors;
        for (std::size_t x = 0; x < columns; x += run) {
            const std::size_t count = std::min(run, columns - x);
            for (std::size_t i = 0; i < count; ++i)
                tile_columns[i] = truncate(static_cast<float>(x + i) * step) % tile_width;
            int32_t gathered_row = -1;
            for (int32_t y = begin; y < end; ++y) {
                const int32_t tile_row = truncate(step * static_cast<float>(y)) % tile_height;
                // An enlarged tile has several rows of the same factors.
                if (tile_row != gathered_row) {
                    const uint8_t *from = tile + static_cast<std::size_t>(tile_row) * element_count(tile_width);
                    for (std::size_t i = 0; i < count; ++i) factors[i] = from[tile_columns[i]];
                    gathered_row = tile_row;
                }
                const std::size_t start = static_cast<std::size_t>(y) * stride + x;
                scaled_by_bytes.active()(src_r + start, factors.data(), dst_r + start, count);
                scaled_by_bytes.active()(src_g + start, factors.data(), dst_g + start, count);
                scaled_by_bytes.active()(src_b + start, factors.data(), dst_b + start, count);
            }
        }
    });
}
