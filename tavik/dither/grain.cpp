#include "tavik/dither/dither.h"

#include "tavik/frame/parallel_for.h"
#include "tavik/frame/random.h"
#include "tavik/frame/size_form.h"

namespace {

constexpr float unit_per_number = 1.0F / 32767.0F;

} // namespace

#define TAVIK_ROWS "tavik/dither/grain_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const uint16_t *numbers, float *plane, float amount, std::size_t count)> add_grain =
    TAVIK_EVERY_LEVEL(add_grain);
constexpr PerLevel<void(const uint16_t *numbers, int32_t *positions, float scale, int32_t first, int32_t step,
                        int32_t limit, std::size_t count)>
    displaced = TAVIK_EVERY_LEVEL(displaced);

constexpr std::size_t run = 1024;

} // namespace

TAVIK_EXPORT(void)
xgrain(int32_t width, int32_t height, float amount1, float amount2, float amount3, float *plane1, float *plane2,
       float *plane3) {
    const std::size_t values = counts(width, height);
    const auto grain = [values](float amount, float *plane) {
        std::array<uint16_t, run> numbers;
        for (std::size_t i = 0; i < values; i += run) {
            const std::size_t count = std::min(run, values - i);
            draw_random(numbers.data(), count);
            add_grain.active()(numbers.data(), plane + i, amount, count);
        }
    };
    grain(amount1, plane1);
    grain(amount2, plane2);
    grain(amount3, plane3);
}

TAVIK_EXPORT(void)
FastJitter(uint8_t *dst_r, uint8_t *dst_g, uint8_t *dst_b, int32_t /*ignored*/, int32_t x_max, int32_t y_max,
           const uint8_t *src_r, const uint8_t *src_g, const uint8_t *src_b, int32_t amount) {
    if (x_max <= 0) return;
    const float scale = static_cast<float>(amount) * unit_per_number;
    const int32_t offset = amount / 2;
    const std::size_t width = element_count(x_max);
    const std::size_t stride = width + 1;
    // Drawing and gathering cost several times a light element.
    const int32_t grain = std::max(row_grain(x_max) / 4, 1);
    parallel_for(0, y_max, grain, [&](int32_t begin, int32_t end) {
        std::array<uint16_t, 2 * run> numbers;
        std::array<int32_t, run> columns;
        std::array<int32_t, run> rows;
        for (int32_t y = begin; y < end; ++y) {
            for (std::size_t x = 0; x < width; x += run) {
                const std::size_t count = std::min(run, width - x);
                draw_random(numbers.data(), 2 * count);
                displaced.active()(numbers.data(), columns.data(), scale, wrap_sub(static_cast<int32_t>(x), offset), 1,
                                   x_max - 2, count);
                displaced.active()(numbers.data() + 1, rows.data(), scale, wrap_sub(y, offset), 0, y_max - 2, count);
                const std::size_t to = static_cast<std::size_t>(y) * stride + x;
                for (std::size_t i = 0; i < count; ++i) {
                    const std::size_t from =
                        static_cast<std::size_t>(rows[i]) * stride + static_cast<std::size_t>(columns[i]);
                    dst_r[to + i] = src_r[from];
                    dst_g[to + i] = src_g[from];
                    dst_b[to + i] = src_b[from];
                }
            }
        }
    });
}
