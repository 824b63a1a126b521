#include "tavik/frame/parallel_for.h"
#include "tavik/frame/size_form.h"
#include "tavik/resample/positions.h"
#include "tavik/resample/resample.h"

#define TAVIK_ROWS "tavik/resample/prefilter_rows.inl"
#include "tavik/frame/each_level.inl"

using namespace tavik;

namespace {

constexpr PerLevel<void(const int32_t *sums, float inverse, uint8_t *dst, std::size_t count)> divide_sums =
    TAVIK_EVERY_LEVEL(divide_sums);
constexpr PerLevel<void(float *sums, const uint8_t *lead, const uint8_t *trail, std::size_t count)> move_spans =
    TAVIK_EVERY_LEVEL(move_spans);
constexpr PerLevel<void(float *sums, const uint8_t *lead, const uint8_t *trail, float inverse, uint8_t *dst,
                        std::size_t count)>
    average_spans = TAVIK_EVERY_LEVEL(average_spans);
constexpr PerLevel<void(float *filtered, const uint8_t *unfiltered, float amount, std::size_t count)> lerp_to_bytes =
    TAVIK_EVERY_LEVEL(lerp_to_bytes);

// The span of samples that moves along a line of last + 1 samples. Its sum begins as `size` times the first sample; at
// each step the sample ahead is added and the one behind subtracted.
struct Span {
    int32_t size;
    int32_t last;
    // From the sample averaged to the ones added and subtracted for it.
    int32_t ahead;
    int32_t behind;
    // The averages written. Those of an odd size lie between two samples, one fewer.
    int32_t written;
    float inverse;

    Span(int32_t bound, int32_t target)
        : size(bound / target),
          last(bound),
          ahead(size / 2 + size % 2),
          behind(size / 2),
          written(size % 2 == 0 ? bound + 1 : bound),
          inverse(1.0F / static_cast<float>(size)) {}

    // The sample added in step `step` and, with its number less the size, the one subtracted. The step of the first
    // average is `ahead`; the first step of all is −1.
    int32_t at(int32_t step) const { return std::clamp(step, 0, last); }
};

// Sums of so many samples are exact in single precision, even where the sum begins with a sample of another row.
constexpr int32_t largest_exact_size = (1 << 24) / (2 * 255) - 1;

// `Sum` is float as described, or an integer where that is the same.
template <class Sum> void average_row(const uint8_t *row, uint8_t first_sample, const Span &span, uint8_t *dst) {
    Sum sum = static_cast<Sum>(first_sample) * static_cast<Sum>(span.size);
    const auto move = [&](int32_t step) {
        sum += static_cast<Sum>(row[span.at(step)]);
        sum -= static_cast<Sum>(row[span.at(step - span.size)]);
    };
    for (int32_t step = -1; step < span.ahead; ++step) move(step);
    for_each_block(span.written, [&](int32_t first, int32_t end) {
        std::array<int32_t, block_columns> sums;
        for (int32_t x = first; x < end; ++x) {
            move(x + span.ahead);
            if constexpr (std::is_same_v<Sum, float>)
                dst[x] = low_byte(truncate(span.inverse * sum));
            else
                sums[static_cast<std::size_t>(x - first)] = sum;
        }
        if constexpr (!std::is_same_v<Sum, float>)
            divide_sums.active()(sums.data(), span.inverse, dst + first, static_cast<std::size_t>(end - first));
    });
}

// Columns [first, end) together, row by row. Averages of row y go to dst at y × stride, from `dst` on.
void average_columns(const uint8_t *src, std::size_t stride, const Span &span, uint8_t *dst, int32_t first,
                     int32_t end) {
    std::array<float, block_columns> sums;
    const auto count = static_cast<std::size_t>(end - first);
    const auto row = [&](int32_t step) { return src + row_start(stride, span.at(step)) + first; };
    for (std::size_t x = 0; x < count; ++x) sums[x] = static_cast<float>(row(0)[x]) * static_cast<float>(span.size);
    for (int32_t step = -1; step < span.ahead; ++step)
        move_spans.active()(sums.data(), row(step), row(step - span.size), count);
    for (int32_t y = 0; y < span.written; ++y) {
        const int32_t step = y + span.ahead;
        average_spans.active()(sums.data(), row(step), row(step - span.size), span.inverse,
                               dst + row_start(stride, y) + first, count);
    }
}

void copy_rows(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t rows) {
    if (x_max < 0) return;
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    parallel_for(0, rows, row_grain(x_max), [&](int32_t begin, int32_t end) {
        std::memcpy(dst + row_start(stride, begin), src + row_start(stride, begin), row_start(stride, end - begin));
    });
}

} // namespace

TAVIK_EXPORT(void)
PrefilterCubicPass1Helper(const uint8_t *src, uint8_t *dst, int32_t target_width, int32_t /*ignored*/, int32_t x_max,
                          int32_t row_count) {
    const int32_t target = std::max(target_width, 1);
    if (target >= x_max) {
        copy_rows(src, dst, x_max, row_count);
        return;
    }
    if (row_count < 2) return;
    const Span span(x_max, target);
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    parallel_for(0, row_count - 1, row_grain(x_max), [&](int32_t begin, int32_t end) {
        for (int32_t r = begin; r < end; ++r) {
            const std::size_t base = row_start(stride, r);
            const uint8_t *row = src + static_cast<std::size_t>(static_cast<float>(base));
            auto *average = span.size > largest_exact_size ? average_row<float> : average_row<int32_t>;
            average(row, src[base], span, dst + base);
        }
    });
}

TAVIK_EXPORT(void)
PrefilterCubicPass2Helpter(const uint8_t *src, uint8_t *dst, int32_t x_max, int32_t target_height, int32_t /*ignored*/,
                           int32_t y_max) {
    const int32_t target = std::max(target_height, 1);
    if (target >= y_max) {
        copy_rows(src, dst, x_max, y_max);
        return;
    }
    const Span span(y_max, target);
    const std::size_t stride = static_cast<std::size_t>(x_max) + 1;
    // Half a row further on for an odd size.
    uint8_t *to = dst + (span.size % 2 == 0 ? 0 : stride / 2);
    parallel_for(0, x_max, std::max(row_grain(y_max), block_columns / 4), [&](int32_t begin, int32_t end) {
        for_each_block(end - begin, [&](int32_t first, int32_t block_end) {
            average_columns(src, stride, span, to, begin + first, begin + block_end);
        });
    });
}

TAVIK_EXPORT(void)
xprefilterlerp(int32_t width, int32_t row_count, float amount, float *filtered, const uint8_t *unfiltered) {
    const std::size_t stride = element_count(width);
    if (stride == 0) return;
    parallel_for(0, row_count, row_grain(width), [&](int32_t begin, int32_t end) {
        const std::size_t from = row_start(stride, begin);
        lerp_to_bytes.active()(filtered + from, unfiltered + from, amount, row_start(stride, end - begin));
    });
}
