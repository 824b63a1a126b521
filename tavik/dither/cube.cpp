#include "tavik/dither/dither.h"

#include "tavik/dither/threshold_matrix.h"
#include "tavik/frame/bytes.h"
#include "tavik/frame/fetch_ahead.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/dither/cube_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint8_t *r, const uint8_t *g, const uint8_t *b, const uint8_t *thresholds,
                        uint8_t *indices, std::size_t count)>
    cube_indices = TAVIK_EVERY_LEVEL(cube_indices);
constexpr PerLevel<void(const uint16_t *numbers, uint8_t *thresholds, std::size_t count)> random_thresholds =
    TAVIK_EVERY_LEVEL(random_thresholds);

// The host's 216 colours as whole byte tables.
class Palette {
  public:
    Palette(const uint8_t *r, const uint8_t *g, const uint8_t *b) {
        constexpr std::size_t colours = 216;
        const uint8_t *from[3] = {r, g, b};
        for (std::size_t channel = 0; channel < 3; ++channel)
            std::copy_n(from[channel], colours, tables[channel].begin());
    }
    void look_up(const uint8_t *indices, uint8_t *r, uint8_t *g, uint8_t *b, std::size_t count) const {
        uint8_t *const dst[3] = {r, g, b};
        const uint8_t *const table_starts[3] = {tables[0].data(), tables[1].data(), tables[2].data()};
        map_bytes_to_three.active()(indices, dst, count, table_starts);
    }

  private:
    std::array<ByteTable, 3> tables = {};
};

// Dithers a band with the thresholds of thresholds(y, count), a run of one row.
template <class Thresholds>
void dither_to_cube(int32_t width, int32_t y_start, int32_t y_end, uint8_t *r, uint8_t *g, uint8_t *b,
                    const Palette &palette, const Thresholds &thresholds) {
    const std::size_t stride = element_count(width);
    const auto rows = static_cast<std::size_t>(y_end) - static_cast<std::size_t>(y_start);
    const FetchAhead planes(stride * rows, r, g, b);
    std::array<uint8_t, threshold_run> indices;
    for (int32_t y = y_start; y < y_end; ++y) {
        const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(stride) * y;
        for (std::size_t x = 0; x < stride; x += threshold_run) {
            const std::size_t count = std::min(threshold_run, stride - x);
            const std::ptrdiff_t start = row + static_cast<std::ptrdiff_t>(x);
            planes.fetch(start + count, start + 2 * count);
            cube_indices.active()(r + start, g + start, b + start, thresholds(y, count), indices.data(), count);
            palette.look_up(indices.data(), r + start, g + start, b + start, count);
        }
    }
}

} // namespace

TAVIK_EXPORT(void)
x8BitOrderedDither(int32_t width, int32_t y_start, int32_t y_end, uint8_t *r, uint8_t *g, uint8_t *b,
                   const uint8_t *matrix, const uint8_t *pal_r, const uint8_t *pal_g, const uint8_t *pal_b) {
    if (width <= 0 || y_start >= y_end) return;
    const ThresholdMatrix rows(matrix);
    dither_to_cube(width, y_start, y_end, r, g, b, Palette(pal_r, pal_g, pal_b),
                   [&](int32_t y, std::size_t) { return rows.row(y); });
}

TAVIK_EXPORT(void)
x8BitRandomDither(int32_t width, int32_t y_start, int32_t y_end, uint8_t *r, uint8_t *g, uint8_t *b,
                  const uint8_t *pal_r, const uint8_t *pal_g, const uint8_t *pal_b) {
    constexpr uint32_t seed = 1231209;
    seed_random(seed);
    if (width <= 0 || y_start >= y_end) return;
    std::array<uint16_t, threshold_run> numbers;
    std::array<uint8_t, threshold_run> run;
    dither_to_cube(width, y_start, y_end, r, g, b, Palette(pal_r, pal_g, pal_b), [&](int32_t, std::size_t count) {
        draw_random(numbers.data(), count);
        random_thresholds.active()(numbers.data(), run.data(), count);
        return run.data();
    });
}
