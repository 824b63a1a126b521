#include "tavik/composite/composite.h"

#include <array>

#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"

namespace {

struct Matte {
    int32_t red;
    int32_t green;
    int32_t blue;
    int32_t opacity;
};

constexpr float unit_per_byte_product = 1.0F / 65025.0F;

// A fade is drawn in pieces of so many rows, which step along together, and columns, whole pairs of squares.
constexpr int32_t fade_rows = 16;
constexpr std::size_t pair_of_squares = 20;
constexpr std::size_t fade_piece = 16 * pair_of_squares;

} // namespace

#define TAVIK_ROWS "tavik/composite/previews_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(uint8_t *pixels, const uint8_t *mask, std::size_t count, const Matte &matte)> lay_matte =
    TAVIK_EVERY_LEVEL(lay_matte);
constexpr PerLevel<void(const uint8_t *a, const uint8_t *b, uint8_t flip, uint8_t *middle, std::size_t count)>
    multiply_into_pixels = TAVIK_EVERY_LEVEL(multiply_into_pixels);
constexpr PerLevel<void(float values[fade_rows], float step, uint8_t (*kept)[fade_piece], std::size_t count)>
    fade_columns = TAVIK_EVERY_LEVEL(fade_columns);
constexpr PerLevel<void(const uint8_t *mask, const uint8_t *kept, const uint8_t *squares, const uint8_t *const src[3],
                        uint8_t *const dst[3], std::size_t count)>
    fade_over_squares = TAVIK_EVERY_LEVEL(fade_over_squares);

using Triple = std::array<uint8_t, 3>;
using Squares = std::array<uint8_t, fade_piece>;

constexpr Squares squares_from(uint8_t first, uint8_t second) {
    Squares squares{};
    for (std::size_t x = 0; x < fade_piece; ++x)
        squares[x] = x % pair_of_squares < pair_of_squares / 2 ? first : second;
    return squares;
}

constexpr Squares dark_first = squares_from(100, 200);
constexpr Squares light_first = squares_from(200, 100);

// The bands of rows are 11 and 9 high.
const Squares &squares_of_row(int32_t y) { return y % 20 > 10 ? light_first : dark_first; }

// Falls by 255 from the first point to the second: 0 at the first, −255 at the second.
struct Ramp {
    float per_column;
    float per_row;
    float at_origin;

    Ramp(int32_t x1, int32_t y1, float dx, float dy) {
        const float scale = 255.0F / (dx * dx + dy * dy);
        per_column = dx * scale;
        per_row = dy * scale;
        at_origin = static_cast<float>(x1) * per_column + static_cast<float>(y1) * per_row;
    }
};

struct FadePlanes {
    std::size_t stride;
    const uint8_t *mask;
    const uint8_t *src[3];
    uint8_t *dst[3];
};

// Draws up to fade_rows rows, with the next one of the planes on its way.
template <class Ahead>
void draw_fade(const Ramp &ramp, const FadePlanes &planes, const Ahead &ahead, int32_t first_row, int32_t rows) {
    float values[fade_rows];
    for (int32_t row = 0; row < fade_rows; ++row)
        values[row] = static_cast<float>(first_row + row) * ramp.per_row - ramp.at_origin;
    for (std::size_t x = 0; x < planes.stride; x += fade_piece) {
        const std::size_t count = std::min(fade_piece, planes.stride - x);
        uint8_t kept[fade_rows][fade_piece];
        fade_columns.active()(values, ramp.per_column, kept, count);
        for (int32_t row = 0; row < rows; ++row) {
            const int32_t y = first_row + row;
            const std::size_t start = y * planes.stride + x;
            ahead.fetch(start + planes.stride, start + planes.stride + count);
            const uint8_t *const src[3] = {planes.src[0] + start, planes.src[1] + start, planes.src[2] + start};
            uint8_t *const dst[3] = {planes.dst[0] + start, planes.dst[1] + start, planes.dst[2] + start};
            fade_over_squares.active()(planes.mask + start, kept[row], squares_of_row(y).data(), src, dst, count);
        }
    }
}

} // namespace

TAVIK_EXPORT(void)
Matte_preview_helper(uint8_t *row, const uint8_t *mask, int32_t count, int32_t x0, int32_t x_limit, int32_t mask_offset,
                     int32_t red, int32_t green, int32_t blue, int32_t row_offset, int32_t opacity) {
    const int64_t begin = std::max<int64_t>(0, -int64_t{x0});
    const int64_t end = std::min<int64_t>(count, int64_t{x_limit} - x0);
    if (begin >= end) return;
    const auto first = static_cast<std::ptrdiff_t>(begin);
    auto *const pixels = reinterpret_cast<Triple *>(row + row_offset + 3 * first);
    const uint8_t *const samples = mask + mask_offset + first;
    const Matte matte = {red, green, blue, opacity};
    FetchAhead(static_cast<std::size_t>(end - begin), pixels, samples).for_all([&](std::size_t i, std::size_t n) {
        lay_matte.active()(pixels[i].data(), samples + i, n, matte);
    });
}

TAVIK_EXPORT(void)
alpha_overlay_helper(int32_t row_offset, int32_t /*ignored*/, int32_t first, int32_t last, const uint8_t *a,
                     const uint8_t *b, uint8_t *row, int32_t invert) {
    if (first > last) return;
    const auto count = static_cast<std::size_t>(int64_t{last} - first + 1);
    const uint8_t flip = invert == 0 ? 0 : 255;
    auto *const middles = reinterpret_cast<Triple *>(row + row_offset + 1);
    FetchAhead(count, a + first, b + first, middles).for_all([&](std::size_t i, std::size_t n) {
        multiply_into_pixels.active()(a + first + i, b + first + i, flip, middles[i].data(), n);
    });
}

TAVIK_EXPORT(void)
xLinearAlphaFadePreview(int32_t width, int32_t height, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                        const uint8_t *src1, const uint8_t *src2, const uint8_t *src3, const uint8_t *mask,
                        uint8_t *dst1, uint8_t *dst2, uint8_t *dst3) {
    const float dx = static_cast<float>(x1) - static_cast<float>(x2);
    const float dy = static_cast<float>(y1) - static_cast<float>(y2);
    if (dx * dx + dy * dy < 1.0F) return;
    const Ramp ramp(x1, y1, dx, dy);
    const FadePlanes planes{element_count(width), mask, {src1, src2, src3}, {dst1, dst2, dst3}};
    const FetchAhead ahead(counts(width, height), mask, src1, src2, src3, dst1, dst2, dst3);
    const int32_t bands = height > 0 ? (height - 1) / fade_rows + 1 : 0;
    parallel_for(0, bands, std::max(row_grain(width) / fade_rows, 1), [&](int32_t begin, int32_t end) {
        for (int32_t band = begin; band < end; ++band)
            draw_fade(ramp, planes, ahead, band * fade_rows, std::min(height - band * fade_rows, fade_rows));
    });
}
