#include <algorithm>
#include <array>
#include <cstring>

#include "tavik/frame/arithmetic.h"
#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/paint/paint.h"

namespace {

using namespace tavik;

constexpr std::size_t columns_at_a_time = 256;

// Slanted stripes of labels 1 .. period, which is at most 254.
struct Stripes {
    int32_t period;
    int32_t slant_x, slant_y;
    std::array<uint8_t, columns_at_a_time> steps; // phases of the columns of a run relative to its first

    Stripes(int32_t label_count, int32_t along_x, int32_t along_y)
        : period(label_count),
          slant_x(floored_modulo(along_x, label_count)),
          slant_y(floored_modulo(along_y, label_count)) {
        for (std::size_t i = 0; i < columns_at_a_time; ++i)
            steps[i] = static_cast<uint8_t>(static_cast<int32_t>(i) * slant_x % period);
    }

    // 0 .. period − 1; the label is one more.
    int32_t phase(std::size_t x, int32_t y) const {
        return static_cast<int32_t>((static_cast<int64_t>(x) * slant_x + int64_t{y} * slant_y) % period);
    }
};

} // namespace

#define TAVIK_ROWS "tavik/paint/marquee_rows.inl"
#include "tavik/frame/each_level.inl"

namespace {

constexpr PerLevel<void(const Stripes &stripes, int32_t phase, uint8_t least, const uint8_t *mask, uint8_t *dst,
                        std::size_t count)>
    label_edge_row = TAVIK_EVERY_LEVEL(label_edge_row);
constexpr PerLevel<void(const Stripes &stripes, int32_t phase, uint8_t least, const uint8_t *mask, std::size_t stride,
                        uint8_t *dst, std::size_t count)>
    label_inner_row = TAVIK_EVERY_LEVEL(label_inner_row);

// Calls label(x, count) for runs of the columns first .. end − 1.
template <class Label> void for_each_run(std::size_t first, std::size_t end, const Label &label) {
    for (std::size_t x = first; x < end; x += columns_at_a_time) label(x, std::min(columns_at_a_time, end - x));
}

} // namespace

TAVIK_EXPORT(void)
xInitMarquee(const uint8_t *mask, uint8_t *dst, int32_t width, int32_t height, int32_t threshold, int32_t dash,
             int32_t slant_x, int32_t slant_y) {
    if (width <= 0 || height <= 0) return;
    if (threshold >= 255) {
        std::memset(dst, 0, counts(width, height));
        return;
    }
    const auto least = static_cast<uint8_t>(std::max(threshold, -1) + 1);
    const Stripes stripes(2 * std::clamp(dash, 1, 127), slant_x, slant_y);
    const std::size_t columns = element_count(width);
    parallel_for(0, height, row_grain(width), [&](int32_t begin, int32_t end) {
        for (int32_t y = begin; y < end; ++y) {
            const uint8_t *row = mask + static_cast<std::size_t>(y) * columns;
            uint8_t *labels = dst + static_cast<std::size_t>(y) * columns;
            const auto label_edge = [&](std::size_t x, std::size_t count) {
                label_edge_row.active()(stripes, stripes.phase(x, y), least, row + x, labels + x, count);
            };
            const auto label_inner = [&](std::size_t x, std::size_t count) {
                label_inner_row.active()(stripes, stripes.phase(x, y), least, row + x, columns, labels + x, count);
            };
            if (y == 0 || y == height - 1 || columns < 3) {
                for_each_run(0, columns, label_edge);
                continue;
            }
            label_edge(0, 1);
            for_each_run(1, columns - 1, label_inner);
            label_edge(columns - 1, 1);
        }
    });
}
