#include "tavik/dither/dither.h"

#include "tavik/dither/threshold_matrix.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"

#define TAVIK_ROWS "tavik/dither/one_bit_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *thresholds, std::size_t count)>
    black_or_white = TAVIK_EVERY_LEVEL(black_or_white);
constexpr PerLevel<void(const uint16_t *numbers, uint8_t *thresholds, std::size_t count)> random_grey_thresholds =
    TAVIK_EVERY_LEVEL(random_grey_thresholds);

} // namespace

TAVIK_EXPORT(void)
x1bitorderedDither(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b, const uint8_t *matrix) {
    if (width <= 0 || height <= 0) return;
    const ThresholdMatrix thresholds(matrix);
    const std::size_t stride = element_count(width);
    for (int32_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < stride; x += threshold_run) {
            const std::size_t start = static_cast<std::size_t>(y) * stride + x;
            black_or_white.active()(r + start, g + start, b + start, thresholds.row(y),
                                    std::min(threshold_run, stride - x));
        }
    }
}

TAVIK_EXPORT(void) x1bitranddither(int32_t width, int32_t height, uint8_t *r, uint8_t *g, uint8_t *b) {
    const std::size_t pixels = counts(width, height);
    std::array<uint16_t, threshold_run> numbers;
    std::array<uint8_t, threshold_run> thresholds;
    for (std::size_t i = 0; i < pixels; i += threshold_run) {
        const std::size_t count = std::min(threshold_run, pixels - i);
        draw_random(numbers.data(), count);
        random_grey_thresholds.active()(numbers.data(), thresholds.data(), count);
        black_or_white.active()(r + i, g + i, b + i, thresholds.data(), count);
    }
}
